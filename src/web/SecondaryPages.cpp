#include "web/SecondaryPages.h"

#include "ui/NavigationController.h"
#include "ui/Navigator.h"
#include "web/OLMiniProgramStyleViewController.h"
#include "web/OMOutLinkViewController.h"
#include "web/PageProfiles.h"

using namespace Qt::StringLiterals;

SecondaryPages::SecondaryPages(Navigator *navigator, PageProfiles *profiles, PageHost *host,
    MainQueue *mainQueue, OMOutLinkLandscapeViewController::SetLandscapeScreen setLandscapeScreen)
    : m_navigator(navigator)
    , m_profiles(profiles)
    , m_host(host)
    , m_mainQueue(mainQueue)
    , m_setLandscapeScreen(std::move(setLandscapeScreen))
{
    const QString views = u"qrc:/qt/qml/Vant/Web/"_s;
    for (const auto &screen : {u"MiniProgramScreen"_s, u"LandscapeScreen"_s, u"OutLinkScreen"_s})
        navigator->registerScreen(screen, QUrl(views + screen + u".qml"_s));
}

void SecondaryPages::jump2Outlink(const QString &url, const QString &title, const QString &color)
{
    auto *page = new OLMiniProgramStyleViewController(m_profiles->miniProgram(), m_host);
    page->urlStr = url;
    page->naviColor = color;
    page->setTitle(title);
    m_navigator->present(u"MiniProgramScreen"_s, page);
}

void SecondaryPages::jump2OutlinkLandscape(const QString &url)
{
    auto *page = new OMOutLinkLandscapeViewController(
        m_profiles->landscape(), m_host, m_mainQueue, m_setLandscapeScreen);
    page->urlStr = url;
    m_navigator->present(u"LandscapeScreen"_s, page);
}

void SecondaryPages::openOutLinkPage(const QString &url, const QString &title)
{
    auto *page = new OMOutLinkViewController(m_profiles->outLink(), m_host);
    page->urlStr = url;
    page->setTitle(title);
    auto *bar = new NavigationController(m_navigator, u"OutLinkScreen"_s, page);
    page->setParent(bar);
    m_navigator->present(QString::fromLatin1(NavigationController::screenName), bar);
}
