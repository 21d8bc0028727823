#include "launch/ad/VANTSplashAdManager.h"

#include "launch/Logging.h"
#include "launch/ad/AdResolution.h"
#include "launch/ad/LaunchAdModel.h"
#include "model/DictionaryMapper.h"
#include "model/StringFormat.h"
#include "net/catalogue/RequestInterface.h"
#include "platform/time/NotificationCenter.h"

#include <QJsonArray>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto waitDataDuration = 2s;
constexpr int tallScreen = 2436;

// The platform may leave the scheme to the client.
QString addressOf(const QString &img_url)
{
    if (img_url.isEmpty() || img_url.startsWith(u"http"))
        return img_url;
    return u"http:"_s + img_url;
}

}

VANTSplashAdManager::VANTSplashAdManager(RequestInterface *requests, HTTPNetwork *network,
    MainQueue *mainQueue, NotificationCenter *notifications, const QSize &screenPixels)
    : m_requests(requests)
    , m_notifications(notifications)
    , m_screenPixels(screenPixels)
    , m_launchAd(this, network, mainQueue, screenPixels)
{
}

void VANTSplashAdManager::setupXHLaunchAd()
{
    networkLaunchAd();
}

void VANTSplashAdManager::networkLaunchAd()
{
    m_launchAd.setWaitDataDuration(waitDataDuration);
    m_requests->requestAd(AdResolution::forScreen(m_screenPixels),
        [self = QPointer(this)](int, const QJsonValue &data, const auto &) {
            if (self)
                self->didAnswer(data);
        });
}

// Whatever the status: what is no list of advertisements ends without one.
void VANTSplashAdManager::didAnswer(const QJsonValue &data)
{
    qCDebug(lcLaunch).noquote() << StringFormat::format(u"广告数据 = %@"_s, data);
    const auto model = DictionaryMapper::model<LaunchAdModel>(data.toArray().at(0).toObject());
    LaunchAdConfiguration configuration;
    configuration.imageNameOrURLString = addressOf(model.img_url);
    configuration.openModel = model.link_url;
    m_launchAd.imageAdWithImageAdConfiguration(configuration);
}

void VANTSplashAdManager::localLaunchAd()
{
    m_launchAd.setWaitDataDuration(waitDataDuration);
    LaunchAdConfiguration configuration;
    configuration.imageNameOrURLString = m_screenPixels.height() >= tallScreen
        ? u"qrc:/assets/LaunchAd_1284X2778.png"_s
        : u"qrc:/assets/LaunchAd_1242X2208.png"_s;
    m_launchAd.imageAdWithImageAdConfiguration(configuration);
}

// Neither opens the link nor closes the advertisement: deliberate.
bool VANTSplashAdManager::xhLaunchAd(const QString &, QPointF)
{
    return false;
}

void VANTSplashAdManager::xhLaunchAdShowFinish()
{
    m_notifications->postNotificationName(u"xhLaunchAdShowFinish"_s);
}
