#include "upload/preparation/ExportCache.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 blockSize = 256 * 1024;
const auto finishedSuffix = u".mp4"_s;
const auto unfinishedSuffix = u".part"_s;

bool reachedTheDisk(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadWrite) && fsync(file.handle()) == 0;
}

bool rename(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

}

ExportCache::ExportCache(const QString &folder)
    : m_folder(folder)
{
}

QString ExportCache::keyFor(
    const QString &clipPath, const QByteArray &settings, std::stop_token stop)
{
    QFile clip(clipPath);
    if (!clip.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    QCryptographicHash digest(QCryptographicHash::Blake2b_256);
    digest.addData(settings);
    QByteArray block(blockSize, Qt::Uninitialized);
    qint64 length = 0;
    while ((length = clip.read(block.data(), block.size())) > 0) {
        if (stop.stop_requested())
            return {};
        digest.addData(QByteArrayView(block).first(length));
    }
    return length < 0 ? QString() : QString::fromLatin1(digest.result().toHex());
}

QString ExportCache::find(const QString &key) const
{
    QFile file(finished(key));
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return {};
    file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    return file.fileName();
}

QString ExportCache::pathForWriting(const QString &key) const
{
    return QDir().mkpath(m_folder) ? unfinished(key) : QString();
}

QString ExportCache::add(const QString &key) const
{
    const QString path = finished(key);
    if (!reachedTheDisk(unfinished(key)) || !rename(unfinished(key), path)) {
        discard(key);
        return {};
    }
    prune();
    return path;
}

void ExportCache::discard(const QString &key) const
{
    QFile::remove(unfinished(key));
}

void ExportCache::clear() const
{
    QDir(m_folder).removeRecursively();
}

QString ExportCache::finished(const QString &key) const
{
    return m_folder + u'/' + key + finishedSuffix;
}

QString ExportCache::unfinished(const QString &key) const
{
    return m_folder + u'/' + key + unfinishedSuffix;
}

void ExportCache::prune() const
{
    const QDir folder(m_folder);
    const QStringList left = folder.entryList({u'*' + unfinishedSuffix}, QDir::Files);
    // Newest first.
    const QStringList old
        = folder.entryList({u'*' + finishedSuffix}, QDir::Files, QDir::Time).mid(capacity);
    for (const QString &name : left + old)
        QFile::remove(folder.filePath(name));
}
