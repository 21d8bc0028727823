// peer_login_screen: the client's own login screen in a window, its web engine set up; no start,
// no window of the client's around it, nothing asked of a server.

#include "login/school/LoginViewController2.h"
#include "session/SessionClient.h"
#include "ui/shell/Shell.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QtQml/qqmlextensionplugin.h>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)
Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QtWebEngineQuick::initialize();
    QGuiApplication application(argc, argv);
    SessionClient session {{}};
    Shell shell(session.mainQueue);
    LoginViewController2 controller({
        .device = session.device,
        .account = &session.account,
        .shell = &shell,
        .displayName = u"成长平台"_s,
        .launchAdShowing = [] { return false; },
    });
    QQuickView view;
    view.engine()->addImportPath(u"qrc:/qt/qml"_s);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setInitialProperties({{u"controller"_s, QVariant::fromValue(&controller)}});
    view.setSource(QUrl(u"qrc:/qt/qml/Vant/Login/LoginScreen.qml"_s));
    view.resize(390, 844);
    view.show();
    return QGuiApplication::exec();
}
