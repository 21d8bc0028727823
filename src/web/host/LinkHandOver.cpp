#include "web/host/LinkHandOver.h"

#include "platform/desktop/UrlOpener.h"
#include "platform/time/MainQueue.h"
#include "web/Logging.h"

#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr auto rest = 1s;

}

LinkHandOver::LinkHandOver(UrlOpener *urlOpener, MainQueue *mainQueue,
    const QString &customerServiceAccount, IsForeign isForeign)
    : m_urlOpener(urlOpener)
    , m_mainQueue(mainQueue)
    , m_customerServiceAccount(customerServiceAccount)
    , m_isForeign(std::move(isForeign))
{
}

void LinkHandOver::openFirst(const QList<QUrl> &addresses)
{
    const auto link = std::find_if(addresses.begin(), addresses.end(),
        [this](const QUrl &address) { return m_urlOpener->canOpenURL(address); });
    if (link == addresses.end())
        return;
    if (m_resting) {
        qCDebug(lcWeb) << "a link for another program came too soon after the last:"
                       << link->scheme();
        return;
    }
    m_resting = true;
    m_mainQueue->after(rest, this, [this] { m_resting = false; });
    m_urlOpener->openURL(*link);
}

bool LinkHandOver::openForeign(const QUrl &page)
{
    const bool isPage = page.scheme() == u"https" || page.scheme() == u"http";
    if (!isPage || !m_isForeign(page))
        return false;
    openFirst({page});
    return true;
}
