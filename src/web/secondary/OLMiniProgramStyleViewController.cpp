#include "web/secondary/OLMiniProgramStyleViewController.h"

#include "ui/theme/HexColor.h"
#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/secondary/PageAddress.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int reloadItem = 0;

}

OLMiniProgramStyleViewController::OLMiniProgramStyleViewController(
    std::shared_ptr<WebPageProfile> profile, PageHost *host)
    : WebPageViewController(std::move(profile), host, Bridge::Own)
{
    using D = const QJsonValue &;
    using R = const WebViewJavascriptBridge::Respond &;
    bridge()->registerHandler(u"closeOutLinkPage"_s, [this](D, R) { close(); });
    bridge()->registerHandler(u"changeStatusColor"_s,
        [this](D data, R) { changeStatusColor(data[u"color"].toString()); });
}

QUrl OLMiniProgramStyleViewController::address() const
{
    return PageAddress::escaped(urlStr);
}

QColor OLMiniProgramStyleViewController::statusBarColor() const
{
    return colorOrShellColor(naviColor);
}

void OLMiniProgramStyleViewController::changeStatusColor(const QString &color)
{
    naviColor = color;
    Q_EMIT statusBarColorChanged();
}

QStringList OLMiniProgramStyleViewController::menuItems() const
{
    return {u"   刷新"_s};
}

void OLMiniProgramStyleViewController::leftButtonPressed()
{
    setMenuVisible(!m_menuVisible);
}

void OLMiniProgramStyleViewController::menuItemChosen(int index)
{
    setMenuVisible(false);
    if (index == reloadItem)
        reload();
}

void OLMiniProgramStyleViewController::menuDismissed()
{
    setMenuVisible(false);
}

void OLMiniProgramStyleViewController::reload()
{
    if (webView()->hasPage() && !errorView()->isVisible())
        webView()->reload();
    else
        load();
}

bool OLMiniProgramStyleViewController::handleBack()
{
    const bool menuWasOpen = m_menuVisible;
    setMenuVisible(false);
    return menuWasOpen || WebPageViewController::handleBack();
}

void OLMiniProgramStyleViewController::setMenuVisible(bool visible)
{
    if (std::exchange(m_menuVisible, visible) != visible)
        Q_EMIT menuVisibleChanged();
}
