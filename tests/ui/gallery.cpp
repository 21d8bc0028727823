#include "ui/FontChooser.h"
#include "ui/NavigationController.h"
#include "ui/UiHarness.h"

#include <QDir>
#include <QGuiApplication>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

void photograph(UiHarness &ui, const QString &file)
{
    QTest::qWait(200);
    QImage picture = ui.view.grabWindow();
    if (!picture.save(file))
        qFatal("cannot write %s", qPrintable(file));
}

void photographAll(const QString &prefix, QSize size, double textScale)
{
    {
        UiHarness ui(size, textScale);
        ui.show(QUrl(u"qrc:/samples/ControlsSample.qml"_s));
        photograph(ui, prefix + u"controls.png"_s);
        auto *form = ui.view.rootObject()->property("form").value<QQuickItem *>();
        form->setProperty("contentY", form->property("contentHeight").toReal() - form->height());
        photograph(ui, prefix + u"controls-end.png"_s);
    }
    UiHarness ui(size, textScale);
    ui.shell.navigator()->setAnimated(false);
    ui.showRootView();
    ui.shell.safeArea()->setInsets(u"44,34"_s);
    ViewController home;
    home.setTitle(u"首页"_s);
    NavigationController navigation(ui.shell.navigator(), u"Sample"_s, &home);
    ui.shell.navigator()->setRootViewController(NavigationController::screenName, &navigation);
    ui.shell.toast()->showError(u"请勾选已阅读同意《用户协议》和《隐私政策》"_s);
    photograph(ui, prefix + u"toast.png"_s);
    ui.shell.toast()->hide();
    ui.shell.progressHUD()->show(u"登录中"_s);
    photograph(ui, prefix + u"hud.png"_s);
    ui.shell.progressHUD()->showProgress(u"正在上传"_s, 0.4);
    photograph(ui, prefix + u"progress.png"_s);
    ui.shell.progressHUD()->hide();
    ui.shell.alertView()->show({.title = u"提醒"_s,
        .message = u"你收到一条消息，是否点击查看？"_s,
        .buttons = {u"取消"_s, u"确定"_s}});
    photograph(ui, prefix + u"alert.png"_s);
    ui.shell.alertView()->press(0);
    ui.shell.alertView()->show({.title = u"忘记密码"_s,
        .message
        = u"请联系班主任或学校管理员重置密码。\n重置后用新密码登录，并尽快在“我的”里改成自己的密码。"_s,
        .style = Alert::Style::FullScreen});
    photograph(ui, prefix + u"notice.png"_s);
    ui.shell.alertView()->cancel();
    ui.shell.actionSheet()->show(u"图片"_s, u"保存到相册后可在其他应用里使用"_s,
        {u"保存图片"_s, u"识别二维码"_s}, u"取消"_s, {});
    photograph(ui, prefix + u"sheet.png"_s);
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    const QString folder = application.arguments().value(1);
    if (folder.isEmpty())
        qFatal("ui-gallery DIRECTORY");
    QDir().mkpath(folder);
    FontChooser::apply();
    photographAll(folder + u"/390-"_s, {390, 844}, 1);
    photographAll(folder + u"/320-"_s, {320, 568}, 1);
    photographAll(folder + u"/1280-"_s, {1280, 800}, 1);
    photographAll(folder + u"/390-large-"_s, {390, 844}, 1.5);
    return 0;
}
