#include "platform/services/WebReGeocoder.h"

#include "platform/Logging.h"
#include "platform/http/HTTPSessionManager.h"
#include "platform/transport/ServerAddress.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QString notFound = QStringLiteral("地址查询失败");

LocationError failure(const QString &text)
{
    return {LocationError::ReGeocodeFailed, text};
}

// The service writes an empty list where it knows nothing.
QString text(const QJsonValue &value)
{
    return value.toString(QString());
}

std::optional<LocationReGeocode> parsed(const QByteArray &body)
{
    const QJsonObject answer = QJsonDocument::fromJson(body).object();
    if (answer[u"status"_s].toString() != u"1" || !answer[u"regeocode"_s].isObject()) {
        qCWarning(lcPlatform) << "the map service refused:" << answer[u"info"_s].toString();
        return {};
    }
    const QJsonValue found = answer[u"regeocode"_s];
    const QJsonValue parts = found[u"addressComponent"_s];
    return LocationReGeocode {text(parts[u"country"_s]), text(parts[u"province"_s]),
        text(parts[u"city"_s]), text(parts[u"district"_s]),
        text(parts[u"streetNumber"_s][u"street"_s]), text(found[u"aois"_s][0][u"name"_s])};
}

QUrl secured(QUrl url, bool httpsOnly)
{
    if (httpsOnly && ServerAddress::isOpenToOthers(url))
        url.setScheme(u"https"_s);
    return url;
}

}

void WebReGeocoder::find(const Location &location, Answer answer) const
{
    if (address.isEmpty()) {
        QMetaObject::invokeMethod(
            qApp, [answer = std::move(answer)] { answer({}, failure(u"没有配置地址查询服务"_s)); },
            Qt::QueuedConnection);
        return;
    }
    HTTPSessionManager session(network);
    session.setWholeTime(timeout);
    session.setMaximumBodySize(1024 * 1024);
    const QString place
        = u"%1,%2"_s.arg(location.longitude, 0, 'f', 6).arg(location.latitude, 0, 'f', 6);
    session.GET(
        secured(QUrl(address), httpsOnly).toString(),
        {{u"key"_s, key}, {u"location"_s, place}, {u"extensions"_s, u"all"_s},
            {u"output"_s, u"JSON"_s}},
        [answer](const HTTPResponse &response) {
            const auto address = parsed(response.body);
            answer(address, address ? std::nullopt : std::optional(failure(notFound)));
        },
        [answer](const HTTPResponse &, const HTTPError &error) {
            qCWarning(lcPlatform) << "no address for a position:" << error.description;
            answer({}, failure(notFound));
        });
}
