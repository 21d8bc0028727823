#include "platform/storage/ProfilePaths.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString standard(QStandardPaths::StandardLocation location)
{
    return QStandardPaths::writableLocation(location);
}

}

ProfilePaths::ProfilePaths(const QString &profile)
{
    if (profile.isNull()) {
        data = standard(QStandardPaths::AppDataLocation);
        settings = standard(QStandardPaths::AppConfigLocation) + u"/settings.ini"_s;
        cookies = data + u"/cookies.json"_s;
        keychainFallback = data + u"/keychain.ini"_s;
        web = data + u"/web"_s;
        cache = standard(QStandardPaths::CacheLocation) + u"/http"_s;
        exports = standard(QStandardPaths::CacheLocation) + u"/exports"_s;
        album = standard(QStandardPaths::PicturesLocation);
        videos = standard(QStandardPaths::MoviesLocation);
        downloads = standard(QStandardPaths::DownloadLocation);
    } else {
        QDir().mkpath(profile);
        const QString folder = QDir(profile).canonicalPath();
        name = folder;
        data = folder;
        settings = folder + u"/settings.ini"_s;
        cookies = folder + u"/cookies.json"_s;
        keychainFallback = folder + u"/keychain.ini"_s;
        web = folder + u"/web"_s;
        cache = folder + u"/http"_s;
        qmlCache = folder + u"/qml"_s;
        exports = folder + u"/exports"_s;
        album = folder + u"/Pictures"_s;
        videos = folder + u"/Videos"_s;
        downloads = folder + u"/Downloads"_s;
    }
}
