#include "net/NetClient.h"

#include "model/StringFormat.h"
#include "support/Patience.h"

char *toString(const Answer &answer)
{
    QString text = u"status %1, data %2"_qs.arg(answer.status)
                       .arg(StringFormat::description(answer.data).left(200));
    if (answer.error)
        text += u", error %1 \"%2\""_qs.arg(answer.error->code).arg(answer.error->errorDescription);
    return QTest::toString(text);
}

NetClient::NetClient(const DeploymentConfiguration::Hosts &hosts)
    : loginModel(&defaults)
    , student(&keychain, u"student"_qs)
    , patriarch(&keychain, u"patriarch"_qs)
    , manager(&network, &loginModel, &defaults, hosts)
    , requests(&manager, &student, &patriarch)
{
}

Answer NetClient::await(const Call &call)
{
    // Shared: an answer that comes after the wait must still find its place.
    const auto answers = std::make_shared<QList<Answer>>();
    call([answers](int status, const QJsonValue &data, const auto &error) {
        answers->append({status, data, error});
    });
    if (!answers->isEmpty())
        qFatal("answered from inside the call");
    if (!QTest::qWaitFor([&] { return !answers->isEmpty(); }, patienceMs))
        return {};
    return answers->first();
}

Answer NetClient::connect(
    const QString &action, const QString &start, int type, const HTTPParameters &params)
{
    return await([&](ResponseCallback response) {
        manager.connectWithAction(action, start, type, params, std::move(response));
    });
}

void NetClient::setLocal(const QString &url, const QString &urlQe)
{
    loginModel.setIsLocal(true);
    loginModel.setLocalUrl(url);
    loginModel.setLocalUrlQe(urlQe);
}
