// bench_bridge URL: shows the page in the client's own web view, with an echo on the bridge, and
// prints what the page tells as its result.

#include "platform/desktop/SystemReachability.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/UserDefaults.h"
#include "platform/time/TimerMainQueue.h"
#include "ui/shell/Shell.h"
#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/engine/EngineSetup.h"
#include "web/engine/WebView.h"
#include "web/host/LinkHandOver.h"
#include "web/host/PageHost.h"
#include "web/permissions/PagePermissions.h"
#include "web/profiles/HomePageProfile.h"
#include "web/profiles/WebPageProfile.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QTemporaryDir>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)
Q_IMPORT_QML_PLUGIN(Vant_WebPlugin)

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    EngineSetup::beforeApplication();
    QGuiApplication application(argc, argv);
    if (argc != 2)
        qFatal("usage: bench_bridge URL");

    QTemporaryDir folder;
    HTTPCookieStorage cookies(folder.filePath(u"cookies.json"_s));
    TimerMainQueue mainQueue;
    Shell shell(mainQueue);
    LinkHandOver links(nullptr, &mainQueue, {}); // pages here have no links
    UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    SystemReachability reachability(true);
    PagePermissions permissions(&defaults, [] { return false; });
    PageHost host(&shell, &mainQueue, &links, &reachability, folder.path(), &permissions);
    const auto profile = makeHomePageProfile(folder.filePath(u"web"_s), &cookies);
    WebViewJavascriptBridge bridge([](const QString &) { return true; });
    bridge.registerHandler(
        u"echo"_s, [](const QJsonValue &data, const auto &respond) { respond(data); });
    bridge.registerHandler(u"result"_s, [](const QJsonValue &data, const auto &) {
        std::puts(qUtf8Printable(data.toString()));
        QCoreApplication::quit();
    });
    WebView webView(profile->engineProfile(), &bridge, &host);

    QQuickView window;
    window.engine()->addImportPath(u"qrc:/qt/qml"_s);
    window.setInitialProperties({{u"webView"_s, QVariant::fromValue(&webView)}});
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.resize(390, 844);
    window.setSource(QUrl(u"qrc:/qt/qml/Vant/Web/WebPage.qml"_s));
    window.show();
    webView.load(QUrl(QString::fromLocal8Bit(argv[1])));
    return QGuiApplication::exec();
}
