#include "ui/UiHarness.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>
#include <QtTest>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)

namespace {

// What repeaters and loaders make is found by its place on the screen only, not by its parent
// object.
void collect(QQuickItem *item, QList<QQuickItem *> &found)
{
    found << item;
    for (QQuickItem *child : item->childItems())
        collect(child, found);
}

} // namespace

UiHarness::UiHarness(QSize size, double textScale)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(16 * textScale));
    QGuiApplication::setFont(font);
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(size);
}

void UiHarness::showRootView()
{
    shell.navigator()->registerScreen(
        QStringLiteral("Sample"), QUrl(QStringLiteral("qrc:/samples/SampleScreen.qml")));
    show(QUrl(QStringLiteral("qrc:/samples/SampleWindow.qml")),
        {{QStringLiteral("shell"), QVariant::fromValue(&shell)}});
}

void UiHarness::show(const QUrl &source, const QVariantMap &properties)
{
    view.setInitialProperties(properties);
    view.setSource(source);
    view.show();
    view.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&view));
}

QList<QQuickItem *> UiHarness::itemsWith(const char *property) const
{
    QList<QQuickItem *> found;
    collect(view.contentItem(), found);
    found.removeIf([property](const QQuickItem *item) {
        return !item->isVisible() || item->metaObject()->indexOfProperty(property) < 0;
    });
    return found;
}

QQuickItem *UiHarness::itemWithText(const QString &text) const
{
    const auto items = itemsWith("text");
    const auto it = std::find_if(items.begin(), items.end(),
        [&](const QQuickItem *item) { return item->property("text").toString() == text; });
    return it == items.end() ? nullptr : *it;
}

QQuickItem *UiHarness::itemNamed(const QString &objectName) const
{
    QList<QQuickItem *> found;
    collect(view.contentItem(), found);
    found.removeIf([&](const QQuickItem *item) { return item->objectName() != objectName; });
    return found.size() == 1 ? found.first() : nullptr;
}

void UiHarness::click(const QQuickItem *item)
{
    QVERIFY(item);
    // Columns, rows and grids place their items with the next frame.
    QSignalSpy frame(&view, &QQuickWindow::frameSwapped);
    view.update();
    QVERIFY(frame.wait());
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(&view, Qt::LeftButton, {}, centre.toPoint());
}
