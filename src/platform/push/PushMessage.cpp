#include "platform/push/PushMessage.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

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
    const QUrl page(object[u"payload"].toString(), QUrl::StrictMode);
    const bool isWeb = page.scheme() == u"http" || page.scheme() == u"https";
    // A script or a file of the device must not come in by a message.
    if (!isWeb || page.host().isEmpty())
        return u"its payload is no address of a page"_s;
    return PushMessage {object[u"id"].toString(), object[u"title"].toString(),
        object[u"body"].toString(), object.toVariantMap()};
}
