// peer_channel URL: a web view with an echo on a plain QWebChannel.

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QUrl>
#include <QVariant>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

#include <cstdio>

using namespace Qt::StringLiterals;

class Echo : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE QVariant echo(const QVariant &data) { return data; }
    Q_INVOKABLE void result(const QString &text)
    {
        std::puts(qUtf8Printable(text));
        QCoreApplication::quit();
    }
};

int main(int argc, char **argv)
{
    QtWebEngineQuick::initialize();
    QGuiApplication application(argc, argv);
    if (argc != 2)
        qFatal("usage: peer_channel URL");
    Echo echo;
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{u"shell"_s, QVariant::fromValue(&echo)},
        {u"address"_s, QUrl(QString::fromLocal8Bit(argv[1]))}});
    engine.load(QUrl(u"qrc:/qt/qml/peers/Channel.qml"_s));
    return QGuiApplication::exec();
}

#include "channel.moc"
