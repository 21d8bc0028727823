// bench_requests BASE COUNT SITE: asks the platform for a site's settings through the request
// layer, one call after the other.

#include "common/Clocks.h"
#include "model/LoginModel.h"
#include "net/request/BaseRequestManager.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/storage/HTTPCookieStorage.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

struct Caller
{
    BaseRequestManager &manager;
    QString site;
    int left;
    Clocks clocks {};

    void next()
    {
        if (left-- == 0) {
            std::printf(R"({"wall_ms": %f, "cpu_ms": %f})", clocks.wall(), clocks.processor());
            return QCoreApplication::quit();
        }
        manager.connectWithAction(u"gpl/platform/portal"_s, u"getSetting4App"_s, RequestItem::Get,
            {{u"site_id"_s, site}}, [this](int status, const QJsonValue &data, const auto &) {
                if (status != ResponseStatus::success || data[u"site_name"].toString().isEmpty())
                    qFatal("a call failed");
                next();
            });
    }
};

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 4)
        qFatal("usage: bench_requests BASE COUNT SITE");
    QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    LoginModel loginModel(&defaults);
    HTTPCookieStorage cookies(folder.filePath(u"cookies.json"_s));
    HTTPNetwork network(&cookies);
    DeploymentConfiguration::Hosts hosts;
    hosts.rb = QString::fromLocal8Bit(argv[1]);
    BaseRequestManager manager(&network, &loginModel, &defaults, hosts);
    Caller caller {manager, QString::fromLocal8Bit(argv[3]), QByteArray(argv[2]).toInt()};
    caller.next();
    return QCoreApplication::exec();
}
