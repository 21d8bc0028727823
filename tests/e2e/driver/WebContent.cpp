#include "e2e/driver/WebContent.h"

#include "e2e/driver/Hand.h"
#include "e2e/driver/Patience.h"
#include "e2e/driver/Screen.h"
#include "e2e/driver/StepFailed.h"
#include "ui/navigation/PresentedScreen.h"
#include "web/engine/WebView.h"

#include <QJsonDocument>
#include <QJsonArray>
#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace {

// A page that is left never answers.
constexpr int scriptTimeoutMs = 500;
constexpr int viewTimeoutMs = 15'000;
constexpr double longestPageDrag = 0.6; // of the view's height

// %1: the selector, quoted.
const QString elementScript = QStringLiteral(R"((function () {
    var element = document.querySelector(%1);
    if (!element) return [];
    var box = element.getBoundingClientRect();
    var hit = document.elementFromPoint(box.left + box.width / 2, box.top + box.height / 2);
    return [location.pathname + location.search, element.textContent, innerWidth,
        box.left, box.top, box.width, box.height, hit !== null && element.contains(hit)];
})())");

// Whose document is shown; null where its screen is leaving, for the engine's view does not survive
// the answer of a script then.
WebView *answering(const QQuickItem *view)
{
    WebView *page = nullptr;
    for (const QQuickItem *item = view; item; item = item->parentItem()) {
        if (!page)
            page = item->property("webView").value<WebView *>();
        const QVariant screen = item->property("screen");
        const auto *presented = screen.value<PresentedScreen *>();
        if (screen.isValid()
            && (!presented || presented->phase() == PresentedScreen::Phase::Disappearing))
            return nullptr;
    }
    return page;
}

QString quoted(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray {text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.sliced(1, array.size() - 2));
}

}

WebContent::WebContent(const Screen &screen, Hand *hand)
    : m_screen(screen)
    , m_hand(hand)
{
}

QVariant WebContent::read(const QString &expression) const
{
    WebView *page = answering(m_screen.webView());
    if (!page)
        return {};
    // It may come after the time is over.
    const auto answer = std::make_shared<std::optional<QVariant>>();
    page->evaluateJavaScript(expression, [answer](const QVariant &value) { *answer = value; });
    Patience::waitUntil([&] { return answer->has_value(); }, scriptTimeoutMs);
    return answer->value_or(QVariant());
}

std::optional<WebContent::Element> WebContent::find(const QString &selector) const
{
    const QVariantList found = read(elementScript.arg(quoted(selector))).toList();
    const QQuickItem *view = m_screen.webView();
    if (found.size() != 8 || !view)
        return {};
    const double scale = view->width() / found[2].toDouble();
    const QRectF box(found[3].toDouble() * scale, found[4].toDouble() * scale,
        found[5].toDouble() * scale, found[6].toDouble() * scale);
    return Element {
        found[0].toString(), found[1].toString(), view->mapRectToScene(box), found[7].toBool()};
}

QString WebContent::path() const
{
    return read(u"location.pathname + location.search"_s).toString();
}

bool WebContent::isLoading() const
{
    const QQuickItem *view = m_screen.webView();
    return !view || view->property("loading").toBool();
}

QPointF WebContent::bringIntoView(const QString &selector) const
{
    QPointF before;
    const bool rests = Patience::waitUntil(
        [&] {
            const auto element = find(selector);
            if (!element)
                return false;
            if (!element->reachable) {
                dragTowards(element->place);
                return false;
            }
            const QPointF centre = element->place.center();
            return std::exchange(before, centre) == centre;
        },
        viewTimeoutMs);
    if (!rests)
        throw StepFailed {u"%1 cannot be brought into view on %2"_s.arg(selector, path())};
    return before;
}

void WebContent::dragTowards(const QRectF &place) const
{
    const QQuickItem *view = m_screen.webView();
    if (!view)
        return;
    const QRectF whole = view->mapRectToScene(QRectF(0, 0, view->width(), view->height()));
    const double reach = whole.height() * longestPageDrag;
    const double way = qBound(-reach, whole.center().y() - place.center().y(), reach);
    const QPointF from(whole.center().x(), whole.center().y() - way / 2);
    m_hand->drag(from, from + QPointF(0, way));
}

void WebContent::tap(const QString &selector) const
{
    m_hand->tap(bringIntoView(selector));
}
