#include "web/secondary/OMOutLinkViewController.h"

#include "ui/theme/HexColor.h"

#include <cmath>

namespace {

constexpr double edgeWidth = 24;
constexpr double shortestSwipe = 80;

}

OMOutLinkViewController::OMOutLinkViewController(
    std::shared_ptr<WebPageProfile> profile, PageHost *host)
    : WebPageViewController(std::move(profile), host, Bridge::None)
{
}

QColor OMOutLinkViewController::barColor() const
{
    return colorOrShellColor(statusColor);
}

void OMOutLinkViewController::load()
{
    if (htmlStr.isEmpty())
        return WebPageViewController::load();
    copyCookies();
    webView()->loadHtml(htmlStr);
}

void OMOutLinkViewController::swiped(QPointF from, QPointF to, double width)
{
    const QPointF way = to - from;
    if (std::abs(way.x()) < shortestSwipe || std::abs(way.x()) < 2 * std::abs(way.y()))
        return;
    if (from.x() <= edgeWidth && way.x() > 0)
        webView()->goBack();
    else if (from.x() >= width - edgeWidth && way.x() < 0)
        webView()->goForward();
}
