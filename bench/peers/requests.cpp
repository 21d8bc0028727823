// peer_requests URL COUNT: gets the address again and again, one call after the other, and reads
// the JSON that comes.

#include "common/Clocks.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>

#include <cstdio>

namespace {

struct Caller
{
    QByteArray url;
    int left;
    QNetworkAccessManager network {};
    Clocks clocks {};

    void next()
    {
        if (left-- == 0) {
            std::printf(R"({"wall_ms": %f, "cpu_ms": %f})", clocks.wall(), clocks.processor());
            return QCoreApplication::quit();
        }
        QNetworkRequest request(QUrl::fromEncoded(url));
        request.setRawHeader("User-Agent", "vant-ios;client-st;");
        QNetworkReply *reply = network.get(request);
        QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply] {
            const QJsonObject answer = QJsonDocument::fromJson(reply->readAll()).object();
            reply->deleteLater();
            if (answer[QLatin1String("code")].toInt() != 200
                || answer[QLatin1String("data")][QLatin1String("site_name")].toString().isEmpty())
                qFatal("a call failed");
            next();
        });
    }
};

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3)
        qFatal("usage: peer_requests URL COUNT");
    Caller caller {argv[1], QByteArray(argv[2]).toInt()};
    caller.next();
    return QCoreApplication::exec();
}
