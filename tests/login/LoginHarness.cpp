#include "login/LoginHarness.h"

#include "support/Patience.h"

using namespace Qt::StringLiterals;

LoginHarness::LoginHarness(PlatformProcess &sandbox)
    : sandbox(sandbox)
    , defaults(folder.filePath(u"settings.ini"_s))
    , loginModel(&defaults)
    , cookies(new HTTPCookieStorage(folder.filePath(u"cookies.json"_s)))
    , keychain(u"login-test"_s, folder.filePath(u"keychain.ini"_s))
    , student(&keychain, u"student"_s)
    , patriarch(&keychain, u"patriarch"_s)
    , manager(&network, &loginModel, &defaults, sandbox.hosts())
    , requests(&manager, &student, &patriarch)
    , ssoCookies(cookies, &defaults)
    , loginResult(&loginModel, &defaults, &requests)
    , pushBinding(&loginModel, &requests, &mainQueue)
    , shell(mainQueue)
{
    network.setCookieJar(cookies);
    sandbox.reset();
    sandbox.takeRequests();
}

LoginEnvironment LoginHarness::environment()
{
    return {
        .loginModel = &loginModel,
        .loginResult = &loginResult,
        .mainQueue = &mainQueue,
        .network = &network,
        .notifications = &notifications,
        .pushBinding = &pushBinding,
        .reachability = &reachability,
        .requests = &requests,
        .shell = &shell,
        .ssoCookies = &ssoCookies,
        .wxApi = &wxApi,
        .displayName = u"成长平台"_s,
        .launchAdShowing = [this] { return launchAdShowing; },
    };
}

bool LoginHarness::callsEnd()
{
    return QTest::qWaitFor([this] { return manager.connectItems().empty(); }, patienceMs);
}

QList<TracedRequest> LoginHarness::calls()
{
    QList<TracedRequest> calls = sandbox.takeRequests();
    calls.removeIf([](const TracedRequest &request) { return request.value(u"start"_s).isNull(); });
    return calls;
}

QStringList LoginHarness::askedFor()
{
    QStringList operations;
    for (const TracedRequest &request : calls())
        operations << request.value(u"start"_s);
    return operations;
}

QString LoginHarness::toast()
{
    const Toast *toast = shell.toast();
    return toast->isVisible() ? toast->text() : QString();
}
