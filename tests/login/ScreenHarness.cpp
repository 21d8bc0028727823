#include "login/ScreenHarness.h"

#include <QDir>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)
Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)

using namespace Qt::StringLiterals;

namespace {

void collect(QQuickItem *item, QList<QQuickItem *> &found)
{
    if (!item->isVisible())
        return;
    if (!ScreenHarness::nameOf(item).isEmpty())
        found << item;
    for (QQuickItem *child : item->childItems())
        collect(child, found);
}

QPointF centreOf(const QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
}

}

ScreenHarness::ScreenHarness(SandboxProcess &sandbox, QSize size, double textScale)
    : LoginHarness(sandbox)
    , controller(environment())
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(16 * textScale));
    QGuiApplication::setFont(font);
    view.engine()->addImportPath(u"qrc:/qt/qml"_s);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(size);
    for (const QString &screen : {u"LoginScreen"_s, u"ChooseSchoolScreen"_s})
        shell.navigator()->registerScreen(
            screen, QUrl(u"qrc:/qt/qml/Vant/Login/%1.qml"_s.arg(screen)));
    shell.navigator()->setAnimated(false);
    navigation.emplace(shell.navigator(), u"LoginScreen"_s, &controller);
}

void ScreenHarness::show()
{
    view.setInitialProperties({{u"shell"_s, QVariant::fromValue(&shell)}});
    view.setSource(QUrl(u"qrc:/tests/LoginWindow.qml"_s));
    shell.navigator()->setRootViewController(
        QString::fromLatin1(NavigationController::screenName), &*navigation);
    view.show();
    view.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&view));
}

QString ScreenHarness::nameOf(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

QList<QQuickItem *> ScreenHarness::namedItems() const
{
    QList<QQuickItem *> found;
    collect(view.contentItem(), found);
    return found;
}

QQuickItem *ScreenHarness::named(const QString &name, QAccessible::Role role) const
{
    const auto items = namedItems();
    const auto item = std::find_if(items.rbegin(), items.rend(), [&](QQuickItem *item) {
        return nameOf(item) == name
            && (role == QAccessible::NoRole
                || QAccessible::queryAccessibleInterface(item)->role() == role);
    });
    return item == items.rend() ? nullptr : *item;
}

void ScreenHarness::click(const QString &name, QAccessible::Role role)
{
    QTRY_VERIFY2(named(name, role), qPrintable(name));
    QTest::mouseClick(&view, Qt::LeftButton, {}, centreOf(named(name, role)).toPoint());
}

void ScreenHarness::type(const QString &field, const QString &text)
{
    click(field);
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &view, Qt::Key_unknown, QString(character), {});
}

void ScreenHarness::photograph(const QString &name)
{
    const QString folder = qEnvironmentVariable("VANT_LOGIN_PICTURES");
    if (folder.isEmpty())
        return;
    QVERIFY(QDir().mkpath(folder));
    // The eye wants to see ended animations.
    QTest::qWait(300);
    QVERIFY(view.grabWindow().save(folder + u'/' + name + u".png"_s));
}
