// peer_web_view URL COOKIE...: a window with a web view and nothing else. A cookie is a Set-Cookie
// line; they are there before the page is asked for.

#include <QGuiApplication>
#include <QNetworkCookie>
#include <QQmlApplicationEngine>
#include <QQuickWebEngineProfile>
#include <QUrl>
#include <QWebEngineCookieStore>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QtWebEngineQuick::initialize();
    QGuiApplication application(argc, argv);
    if (argc < 2)
        qFatal("usage: peer_web_view URL [COOKIE...]");
    const QUrl address(QString::fromLocal8Bit(argv[1]));
    QQuickWebEngineProfile profile;
    profile.setStorageName(u"peer"_s);
    profile.setOffTheRecord(false);
    for (int i = 2; i < argc; ++i) {
        for (const QNetworkCookie &cookie : QNetworkCookie::parseCookies(argv[i]))
            profile.cookieStore()->setCookie(cookie, address);
    }
    QQmlApplicationEngine engine;
    engine.setInitialProperties(
        {{u"profile"_s, QVariant::fromValue(&profile)}, {u"address"_s, address}});
    engine.load(QUrl(u"qrc:/qt/qml/peers/WebView.qml"_s));
    return QGuiApplication::exec();
}
