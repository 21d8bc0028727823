#include "ui/UiHarness.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)

using namespace Qt::StringLiterals;

namespace {

// What repeaters and loaders make is found by its place on the screen only, not by its parent
// object.
void collect(QQuickItem *item, QList<QQuickItem *> &found)
{
    if (!item->isVisible())
        return;
    found << item;
    for (QQuickItem *child : item->childItems())
        collect(child, found);
}

}

UiHarness::UiHarness(QSize size, double textScale)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(16 * textScale));
    QGuiApplication::setFont(font);
    view.engine()->addImportPath(u"qrc:/qt/qml"_s);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(size);
}

void UiHarness::showRootView(Shell *anotherShell)
{
    anotherShell->navigator()->registerScreen(
        u"Sample"_s, QUrl(u"qrc:/samples/SampleScreen.qml"_s));
    view.setInitialProperties({{u"shell"_s, QVariant::fromValue(anotherShell)}});
    view.setSource(QUrl(u"qrc:/qt/qml/Vant/Ui/RootView.qml"_s));
    show();
}

void UiHarness::show()
{
    view.show();
    view.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&view, patienceMs));
}

QList<QQuickItem *> UiHarness::items() const
{
    QList<QQuickItem *> found;
    collect(view.contentItem(), found);
    return found;
}

QString UiHarness::textOf(QQuickItem *item)
{
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
    const QString name = accessible ? accessible->text(QAccessible::Name) : QString();
    return name.isEmpty() ? item->property("text").toString() : name;
}

QQuickItem *UiHarness::itemWithText(const QString &text) const
{
    const auto all = items();
    const auto it = std::find_if(
        all.begin(), all.end(), [&](QQuickItem *item) { return textOf(item) == text; });
    return it == all.end() ? nullptr : *it;
}

void UiHarness::click(const QQuickItem *item)
{
    QVERIFY(item);
    // Columns, rows and grids place their items with the next frame.
    QSignalSpy frame(&view, &QQuickWindow::frameSwapped);
    view.update();
    QVERIFY(frame.wait(patienceMs));
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(&view, Qt::LeftButton, {}, centre.toPoint());
}
