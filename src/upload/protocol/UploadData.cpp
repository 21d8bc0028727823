#include "upload/protocol/UploadData.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cstdio>

namespace {

constexpr qint64 blockSize = 256 * 1024;

bool replace(const QString &path, const QString &by)
{
    return std::rename(QFile::encodeName(by).constData(), QFile::encodeName(path).constData()) == 0;
}

bool copy(QIODevice &from, QIODevice &to, const BlockWatcher &watcher)
{
    QByteArray block(blockSize, Qt::Uninitialized);
    for (qint64 done = 0;;) {
        const qint64 length = from.read(block.data(), block.size());
        if (length <= 0)
            return length == 0;
        if (to.write(block.constData(), length) != length)
            return false;
        done += length;
        if (watcher && !watcher(done))
            return false;
    }
}

bool writeReplacing(const QString &path, QIODevice &from, const BlockWatcher &watcher)
{
    // Not QSaveFile: it waits for the disk, which for a video takes longer than quitting may, and a
    // scratch file is of no use to a next start.
    QTemporaryFile file(path + QStringLiteral(".XXXXXX"));
    if (!file.open() || !copy(from, file, watcher) || !file.flush())
        return false;
    if (!replace(path, file.fileName()))
        return false;
    file.setAutoRemove(false);
    return true;
}

}

UploadData::UploadData(const QByteArray &bytes)
    : m_source(Source::Bytes)
    , m_bytes(bytes)
{
}

UploadData::UploadData(Source source, const QString &filePath)
    : m_source(source)
    , m_filePath(filePath)
{
}

UploadData UploadData::copyOf(const QString &filePath)
{
    return {Source::FileToCopy, filePath};
}

UploadData UploadData::taking(const QString &filePath)
{
    return {Source::FileToTake, filePath};
}

qint64 UploadData::size() const
{
    return m_source == Source::Bytes ? m_bytes.size() : QFileInfo(m_filePath).size();
}

bool UploadData::writeAtomically(const QString &path, const BlockWatcher &watcher) const
{
    if (m_source == Source::Bytes) {
        QBuffer bytes;
        bytes.setData(m_bytes);
        return bytes.open(QIODevice::ReadOnly) && writeReplacing(path, bytes, watcher);
    }
    // A pipe would be waited for without end.
    if (!QFileInfo(m_filePath).isFile())
        return false;
    if (m_source == Source::FileToTake && replace(path, m_filePath))
        return true;
    QFile file(m_filePath);
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
        && writeReplacing(path, file, watcher);
}
