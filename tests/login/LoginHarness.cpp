#include "login/LoginHarness.h"

#include "support/Patience.h"

using namespace Qt::StringLiterals;

LoginHarness::LoginHarness(PlatformProcess &sandbox)
    : sandbox(sandbox)
    , session(sandbox.hosts())
{
    sandbox.reset();
    sandbox.takeRequests();
}

LoginEnvironment LoginHarness::environment()
{
    return {
        .device = session.device,
        .account = &session.account,
        .shell = &shell,
        .displayName = u"成长平台"_s,
        .launchAdShowing = [] { return false; },
    };
}

bool LoginHarness::callsEnd()
{
    return waitFor([this] { return !session.isWaiting(); });
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
