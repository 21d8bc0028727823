#include "web/secondary/SecondaryPages.h"

#include "ui/navigation/NavigationController.h"
#include "ui/navigation/Navigator.h"
#include "web/Logging.h"
#include "web/host/LinkHandOver.h"
#include "web/host/PageHost.h"
#include "web/profiles/PageProfiles.h"
#include "web/secondary/OLMiniProgramStyleViewController.h"
#include "web/secondary/OMOutLinkLandscapeViewController.h"
#include "web/secondary/OMOutLinkViewController.h"
#include "web/secondary/PageAddress.h"

using namespace Qt::StringLiterals;

SecondaryPages::SecondaryPages(
    Navigator *navigator, PageProfiles *profiles, PageHost *host, MainQueue *mainQueue)
    : m_navigator(navigator)
    , m_profiles(profiles)
    , m_host(host)
    , m_mainQueue(mainQueue)
{
    const QString views = u"qrc:/qt/qml/Vant/Web/"_s;
    for (const auto &screen : {u"MiniProgramScreen"_s, u"LandscapeScreen"_s, u"OutLinkScreen"_s})
        navigator->registerScreen(screen, QUrl(views + screen + u".qml"_s));
}

// The page may be on its way out, with the user back on the screen that opens the next.
bool SecondaryPages::isThere(const QPointer<ViewController> &page) const
{
    if (!page || !m_navigator->isPresenting(page))
        return false;
    qCDebug(lcWeb) << "a page was not opened: one is there already";
    return true;
}

void SecondaryPages::jump2Outlink(const QString &url, const QString &title, const QString &color)
{
    if (isThere(m_pageOfPortal) || m_host->links()->openForeign(PageAddress::escaped(url)))
        return;
    auto *page = new OLMiniProgramStyleViewController(m_profiles->miniProgram(), m_host);
    page->urlStr = url;
    page->naviColor = color;
    page->setTitle(title);
    m_pageOfPortal = page;
    m_navigator->present(u"MiniProgramScreen"_s, page);
}

void SecondaryPages::jump2OutlinkLandscape(const QString &url)
{
    if (isThere(m_pageOfPortal)
        || m_host->links()->openForeign(PageAddress::withFourteenEscaped(url)))
        return;
    auto *page = new OMOutLinkLandscapeViewController(m_profiles->landscape(), m_host, m_mainQueue,
        [this](bool landscape) { Q_EMIT landscapeScreenWanted(landscape); });
    page->urlStr = url;
    m_pageOfPortal = page;
    m_navigator->present(u"LandscapeScreen"_s, page);
}

void SecondaryPages::openOutLinkPage(const QString &url, const QString &title)
{
    if (isThere(m_pageOfShell) || m_host->links()->openForeign(QUrl(url)))
        return;
    auto *page = new OMOutLinkViewController(m_profiles->outLink(), m_host);
    page->urlStr = url;
    page->setTitle(title);
    auto *bar = new NavigationController(m_navigator, u"OutLinkScreen"_s, page);
    page->setParent(bar);
    m_pageOfShell = bar;
    m_navigator->present(QString::fromLatin1(NavigationController::screenName), bar);
}
