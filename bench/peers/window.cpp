// peer_window: a window with a text field. peer_window_engine is the same, linked to the web engine
// and with it set up, to tell how much of a start that takes.

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#ifdef WITH_ENGINE
#include <QtWebEngineQuick/qtwebenginequickglobal.h>
#endif

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
#ifdef WITH_ENGINE
    QtWebEngineQuick::initialize();
#endif
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.load(QUrl(u"qrc:/qt/qml/peers/Window.qml"_s));
    return QGuiApplication::exec();
}
