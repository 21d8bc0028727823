#include "launch/ad/LaunchAd.h"

#include "launch/Logging.h"
#include "launch/ad/LaunchAdDelegate.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/http/HTTPSessionManager.h"
#include "platform/time/MainQueue.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto second = 1s;
// Far more than an advertisement has, far less than a phone has.
constexpr qint64 maximumBytes = 10 * 1024 * 1024;

}

LaunchAd::LaunchAd(
    LaunchAdDelegate *delegate, HTTPNetwork *network, MainQueue *mainQueue, const QSize &area)
    : m_delegate(delegate)
    , m_network(network)
    , m_mainQueue(mainQueue)
    , m_area(area)
    , m_picture(mainQueue)
{
}

void LaunchAd::setWaitDataDuration(std::chrono::milliseconds duration)
{
    if (m_phase != Phase::Idle)
        return;
    setPhase(Phase::Waiting);
    m_mainQueue->after(duration, this, [this] {
        if (m_phase == Phase::Waiting)
            finish();
    });
}

void LaunchAd::imageAdWithImageAdConfiguration(const LaunchAdConfiguration &configuration)
{
    const QString address = configuration.imageNameOrURLString;
    if (m_phase == Phase::Waiting)
        m_configuration = configuration;
    if (address.isEmpty())
        return finish();
    HTTPSessionManager session(m_network);
    session.setMaximumBodySize(maximumBytes);
    session.setCachePolicy(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
    session.GET(
        address, {},
        [self = QPointer(this), address](const HTTPResponse &response) {
            if (self)
                self->decode(address, response.body);
        },
        [self = QPointer(this)](const HTTPResponse &, const HTTPError &error) {
            qCInfo(lcLaunch).noquote() << "no advertisement:" << error.description;
            if (self)
                self->finish();
        });
}

void LaunchAd::decode(const QString &address, const QByteArray &encoded)
{
    if (m_phase != Phase::Waiting)
        return;
    m_picture.load(encoded, m_area, [this, address](bool usable) {
        if (!usable) {
            qCInfo(lcLaunch) << "the advertisement is no usable picture";
            if (m_network->cache())
                m_network->cache()->remove(QUrl(address));
            return finish();
        }
        if (m_phase == Phase::Waiting)
            show();
    });
}

void LaunchAd::show()
{
    m_left = m_configuration.duration;
    setPhase(Phase::Showing);
    Q_EMIT skipTextChanged();
    m_mainQueue->after(second, this, [this] { countDown(); });
}

void LaunchAd::countDown()
{
    if (m_phase != Phase::Showing)
        return;
    m_left -= second;
    if (m_left <= 0s)
        return leave();
    Q_EMIT skipTextChanged();
    m_mainQueue->after(second, this, [this] { countDown(); });
}

QString LaunchAd::skipText() const
{
    return u"跳过 %1"_s.arg(m_left.count());
}

void LaunchAd::skip()
{
    if (m_phase == Phase::Showing)
        leave();
}

void LaunchAd::click(QPointF point)
{
    if (m_phase == Phase::Showing && m_delegate->xhLaunchAd(m_configuration.openModel, point))
        leave();
}

void LaunchAd::leave()
{
    setPhase(Phase::Leaving);
    m_mainQueue->after(m_configuration.showFinishAnimateTime, this, [this] { finish(); });
}

void LaunchAd::finish()
{
    if (!coversWindow())
        return;
    setPhase(Phase::Gone);
    m_picture.clear();
    m_delegate->xhLaunchAdShowFinish();
}

void LaunchAd::setPhase(Phase phase)
{
    m_phase = phase;
    Q_EMIT phaseChanged();
}
