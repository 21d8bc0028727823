#include "platform/media/MediaFolders.h"

#include "platform/Logging.h"

#include <QDir>
#include <QSet>

#include <algorithm>
#include <deque>

using namespace Qt::StringLiterals;

namespace {

struct Folder
{
    QString path;
    int depth = 0;
};

const QSet<QString> &suffixesOf(PhotoAsset::MediaType mediaType)
{
    static const QSet<QString> photos {
        u"jpg"_s, u"jpeg"_s, u"png"_s, u"heic"_s, u"heif"_s, u"gif"_s, u"webp"_s, u"bmp"_s};
    static const QSet<QString> clips {u"mp4"_s, u"m4v"_s, u"mov"_s, u"3gp"_s, u"mkv"_s, u"webm"_s,
        u"avi"_s, u"ogv"_s, u"mpg"_s, u"mpeg"_s, u"wmv"_s};
    return mediaType == PhotoAsset::MediaType::Video ? clips : photos;
}

bool keepsACache(const QDir &folder)
{
    static const QSet<QString> names {u"cache"_s, u"caches"_s, u"thumbnails"_s};
    return names.contains(folder.dirName().toLower()) || folder.exists(u"CACHEDIR.TAG"_s)
        || folder.exists(u".nomedia"_s);
}

}

QList<PhotoAsset> MediaFolders::assetsIn(
    const QStringList &folders, PhotoAsset::MediaType mediaType, const std::stop_token &stop)
{
    const QSet<QString> &suffixes = suffixesOf(mediaType);
    QList<PhotoAsset> assets;
    QSet<QString> seen; // a link may lead back
    int entries = 0;
    std::deque<Folder> waiting;
    for (const QString &folder : folders)
        waiting.push_back({folder, 0});
    for (; !waiting.empty() && !stop.stop_requested(); waiting.pop_front()) {
        const QString path = QDir(waiting.front().path).canonicalPath();
        const QDir folder(path);
        const int depth = waiting.front().depth;
        if (path.isEmpty() || seen.contains(path) || keepsACache(folder))
            continue;
        seen.insert(path);
        const QFileInfoList found = folder.entryInfoList(
            QDir::Dirs | QDir::Files | QDir::Readable | QDir::NoDotAndDotDot, QDir::Unsorted);
        for (const QFileInfo &entry : found) {
            if (++entries > mostEntries) {
                qCWarning(lcPlatform) << "too many files for a photo library, some are left out";
                waiting.resize(1);
                break;
            }
            if (entry.isDir() && depth < deepest)
                waiting.push_back({entry.filePath(), depth + 1});
            else if (entry.isFile() && suffixes.contains(entry.suffix().toLower()))
                assets.append({entry.canonicalFilePath(), mediaType == PhotoAsset::MediaType::Video,
                    entry.lastModified(), entry.size()});
        }
    }
    std::sort(assets.begin(), assets.end(), PhotoAsset::comesFirst);
    assets.erase(std::unique(assets.begin(), assets.end()), assets.end());
    return assets;
}
