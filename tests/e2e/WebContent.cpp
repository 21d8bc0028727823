#include "e2e/WebContent.h"

#include "e2e/Hand.h"
#include "e2e/ScriptAnswer.h"
#include "e2e/Screen.h"
#include "e2e/StepFailed.h"

#include <QJsonDocument>
#include <QJsonArray>
#include <QJSValue>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int scriptTimeoutMs = 2'000;
constexpr int appearTimeoutMs = 8'000;
constexpr int mostDrags = 40;
constexpr double longestDrag = 0.6; // of the view's height

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

QQuickItem *WebContent::view() const
{
    return m_screen.webView();
}

QVariant WebContent::read(const QString &expression) const
{
    QQuickItem *view = this->view();
    QQmlEngine *engine = view ? qmlEngine(view) : nullptr;
    if (!engine)
        return {};
    auto *answer = new ScriptAnswer;
    // Shared with the engine, which may call back after the time is over.
    const QJSValue wrapped = engine->newQObject(answer);
    QMetaObject::invokeMethod(view, "runJavaScript", Q_ARG(QString, expression),
        Q_ARG(QJSValue, wrapped.property(u"take"_s)));
    const QPointer guard(answer);
    if (!QTest::qWaitFor([&] { return !guard || guard->isTaken(); }, scriptTimeoutMs) || !guard)
        return {};
    return guard->value();
}

QString WebContent::text(const QString &selector) const
{
    return read(u"(document.querySelector(%1) || {}).textContent"_s.arg(quoted(selector))).toString();
}

QString WebContent::path() const
{
    return read(u"location.pathname + location.search"_s).toString();
}

std::optional<QRectF> WebContent::place(const QString &selector) const
{
    const QVariantList box = read(
        u"(function () {"
        "  var element = document.querySelector(%1);"
        "  if (!element) return [];"
        "  var box = element.getBoundingClientRect();"
        "  return [box.left, box.top, box.width, box.height, innerWidth];"
        "})()"_s.arg(quoted(selector))).toList();
    QQuickItem *view = this->view();
    if (box.size() != 5 || !view)
        return {};
    const double scale = view->width() / box[4].toDouble();
    const QRectF inView(box[0].toDouble() * scale, box[1].toDouble() * scale,
        box[2].toDouble() * scale, box[3].toDouble() * scale);
    return view->mapRectToScene(inView);
}

bool WebContent::isReachable(const QString &selector) const
{
    return read(
        u"(function () {"
        "  var element = document.querySelector(%1);"
        "  if (!element) return false;"
        "  var box = element.getBoundingClientRect();"
        "  var hit = document.elementFromPoint(box.left + box.width / 2, box.top + box.height / 2);"
        "  return hit !== null && element.contains(hit);"
        "})()"_s.arg(quoted(selector))).toBool();
}

QPointF WebContent::bringIntoView(const QString &selector) const
{
    if (!QTest::qWaitFor([&] { return place(selector).has_value(); }, appearTimeoutMs))
        throw StepFailed {u"the page %1 has no %2"_s.arg(path(), selector)};
    double before = qInf();
    for (int i = 0; i < mostDrags; ++i) {
        const auto here = place(selector);
        QQuickItem *view = this->view();
        if (!here || !view)
            throw StepFailed {u"the page went away from %1"_s.arg(selector)};
        // A page that still moves is waited for.
        if (isReachable(selector) && here->center().y() == before)
            return here->center();
        const QRectF whole = view->mapRectToScene(QRectF(0, 0, view->width(), view->height()));
        if (!isReachable(selector)) {
            const double reach = whole.height() * longestDrag;
            const double way = qBound(-reach, whole.center().y() - here->center().y(), reach);
            const QPointF from(whole.center().x(), whole.center().y() - way / 2);
            m_hand->drag(from, from + QPointF(0, way));
        }
        before = here->center().y();
    }
    throw StepFailed {u"%1 cannot be brought into view on %2"_s.arg(selector, path())};
}

void WebContent::tap(const QString &selector) const
{
    m_hand->tap(bringIntoView(selector));
}

void WebContent::click(const QString &selector) const
{
    m_hand->click(bringIntoView(selector));
}
