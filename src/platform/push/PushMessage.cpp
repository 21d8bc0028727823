#include "platform/push/PushMessage.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isPage(const QString &payload)
{
    const QUrl page(payload, QUrl::StrictMode);
    const bool isWeb = page.scheme() == u"http" || page.scheme() == u"https";
    return isWeb && !page.host().isEmpty();
}

}

std::variant<PushMessage, QString> PushMessage::parse(const QByteArray &data)
{
    if (data.size() > mostBytes)
        return u"it is longer than %1 bytes"_s.arg(mostBytes);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(data, &error);
    if (error.error != QJsonParseError::NoError)
        return u"it is no JSON: %1"_s.arg(error.errorString());
    if (!document.isObject())
        return u"it is no JSON object"_s;
    const QJsonObject object = document.object();
    const QJsonValue payload = object[u"payload"];
    const bool opensPage = !payload.isUndefined() && !payload.isNull() && payload != u""_s;
    // A script or a file of the device must not come in by a message.
    if (opensPage && !isPage(payload.toString()))
        return u"its payload is no address of a page"_s;
    const PushMessage message {object[u"id"].toString(), object[u"title"].toString(),
        object[u"body"].toString(), opensPage, object.toVariantMap()};
    if (!opensPage && message.title.isEmpty() && message.body.isEmpty())
        return u"it has nothing to show or to open"_s;
    return message;
}
