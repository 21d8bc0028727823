#include "services/LocationForPages.h"

#include "model/StringFormat.h"
#include "net/request/LogMask.h"
#include "services/Logging.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto locationTimeout = 10s;
constexpr auto reGeocodeTimeout = 10s;

QString degrees(double value)
{
    return QString::number(value, 'f', 6);
}

// Where somebody is stays out of the log.
QString hidden(const QJsonValue &value)
{
    return LogMask::secret(value.toString());
}

QString textOf(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented));
}

QString addressOf(const LocationReGeocode &found)
{
    return StringFormat::format(u"%@%@%@%@%@%@"_s, found.country, found.province, found.city,
        found.district, found.street, found.aoiName)
        .remove(u' ');
}

}

LocationForPages::LocationForPages(LocationManager *manager)
    : m_manager(manager)
{
}

void LocationForPages::initLocation()
{
    m_manager->updatePrivacy(true, true, true);
    m_manager->setLocationTimeout(locationTimeout);
    m_manager->setReGeocodeTimeout(reGeocodeTimeout);
}

void LocationForPages::getLocation(std::function<void(const QString &)> onGetBDLocation)
{
    m_manager->requestLocationWithReGeocode(
        [onGetBDLocation](const auto &location, const auto &reGeocode, const auto &error) {
            onGetBDLocation(answer(location, reGeocode, error));
        });
}

QString LocationForPages::answer(const std::optional<Location> &location,
    const std::optional<LocationReGeocode> &reGeocode, const std::optional<LocationError> &error)
{
    if (error)
        qCDebug(lcServices, "locError:{%d - %s};", int(error->code),
            qPrintable(error->localizedDescription));
    QJsonObject data;
    if (location) {
        data = {{u"latitude"_s, degrees(location->latitude)},
            {u"lontitude"_s, degrees(location->longitude)},
            {u"addr"_s, addressOf(reGeocode.value_or(LocationReGeocode()))}};
        qCDebug(lcServices).noquote() << StringFormat::format(u"当前位置信息：经纬度：%@,%@"_s,
            hidden(data[u"latitude"_s]), hidden(data[u"lontitude"_s]));
    }
    QJsonObject object {{u"code"_s, location ? u"200"_s : u"-1"_s},
        {u"msg"_s, error ? error->localizedDescription : u"获取成功"_s}, {u"data"_s, data}};
    const QString text = textOf(object);
    for (auto member = data.begin(); member != data.end(); ++member)
        *member = hidden(*member);
    object[u"data"_s] = data;
    qCDebug(lcServices).noquote() << StringFormat::format(u"onGetBDLocation: %@"_s, textOf(object));
    return text;
}
