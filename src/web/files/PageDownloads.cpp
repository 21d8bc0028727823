#include "web/files/PageDownloads.h"

#include "platform/time/MainQueue.h"
#include "web/Logging.h"
#include "web/files/PageDownload.h"
#include "web/host/PageHost.h"

#include <QWebEngineDownloadRequest>

namespace {

using namespace std::chrono_literals;

constexpr int mostAtOnce = 3;
constexpr auto restAfterRefusal = 3s;

}

PageDownloads::PageDownloads(PageHost *host)
    : m_host(host)
{
}

void PageDownloads::start(QWebEngineDownloadRequest *request, const QUrl &page)
{
    const quint32 number = request->id();
    if (PageDownload *brokenOff = m_underWay.value(number))
        return brokenOff->goOn(request);
    if (m_resting || m_underWay.size() == mostAtOnce) {
        qCDebug(lcWeb) << "a page's download was dropped, besides" << m_underWay.size();
        request->cancel();
        return;
    }
    auto *download = new PageDownload(request, page, m_host);
    m_underWay.insert(number, download);
    connect(download, &QObject::destroyed, this, [this, number] { m_underWay.remove(number); });
    connect(download, &PageDownload::refused, this, &PageDownloads::rest);
    connect(this, &PageDownloads::withdrawn, download, &PageDownload::withdraw);
    connect(this, &QObject::destroyed, download, &PageDownload::withdraw);
}

void PageDownloads::withdraw()
{
    Q_EMIT withdrawn();
}

// A page that asks in a loop could not be left otherwise.
void PageDownloads::rest()
{
    m_resting = true;
    m_host->mainQueue()->after(restAfterRefusal, this, [this] { m_resting = false; });
    withdraw();
}
