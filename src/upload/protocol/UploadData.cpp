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
    : m_content(bytes)
{
}

UploadData::UploadData(const File &file)
    : m_content(file)
{
}

UploadData UploadData::copyOf(const QString &filePath)
{
    return File {filePath};
}

qint64 UploadData::size() const
{
    if (const auto *bytes = std::get_if<QByteArray>(&m_content))
        return bytes->size();
    return QFileInfo(std::get<File>(m_content).path).size();
}

bool UploadData::writeAtomically(const QString &path, const BlockWatcher &watcher) const
{
    if (const auto *bytes = std::get_if<QByteArray>(&m_content)) {
        QBuffer buffer;
        buffer.setData(*bytes);
        return buffer.open(QIODevice::ReadOnly) && writeReplacing(path, buffer, watcher);
    }
    const QString &from = std::get<File>(m_content).path;
    // A pipe would be waited for without end.
    if (!QFileInfo(from).isFile())
        return false;
    QFile file(from);
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
        && writeReplacing(path, file, watcher);
}
