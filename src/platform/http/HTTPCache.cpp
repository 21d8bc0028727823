#include "platform/http/HTTPCache.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDateTime>
#include <QDir>

namespace {

const QString filePattern = QStringLiteral("*.answer");

QByteArray digestOf(const QByteArray &content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha1);
}

}

HTTPCache::HTTPCache(const QString &folder)
    : m_folder(folder)
{
}

QString HTTPCache::pathOf(const QUrl &url) const
{
    const QByteArray name = QCryptographicHash::hash(url.toEncoded(), QCryptographicHash::Sha256);
    return m_folder + u'/' + QString::fromLatin1(name.toHex()) + filePattern.sliced(1);
}

std::optional<HTTPResponse> HTTPCache::find(const QUrl &url) const
{
    QFile file(pathOf(url));
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return {};
    HTTPResponse response;
    QByteArray digest;
    QByteArray type;
    QDataStream stream(&file);
    stream >> digest >> response.statusCode >> type >> response.body;
    if (stream.status() != QDataStream::Ok || digest != digestOf(response.body)) {
        file.remove();
        return {};
    }
    response.headers.append({"Content-Type", type});
    // What is used is young.
    file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    return response;
}

void HTTPCache::keep(const QUrl &url, const HTTPResponse &response)
{
    if (response.body.size() > mostBytes || !QDir().mkpath(m_folder))
        return;
    // Not to the disk at once, which takes its time: the digest tells what was cut off.
    QFile file(pathOf(url));
    if (!file.open(QIODevice::WriteOnly))
        return;
    QDataStream stream(&file);
    stream << digestOf(response.body) << response.statusCode << response.header("Content-Type")
           << response.body;
    makeRoom();
}

void HTTPCache::remove(const QUrl &url)
{
    QFile::remove(pathOf(url));
}

void HTTPCache::clear()
{
    // Behind a link lies what is not the cache's.
    if (!QFileInfo(m_folder).isSymLink())
        QDir(m_folder).removeRecursively();
}

void HTTPCache::makeRoom()
{
    qint64 left = mostBytes;
    // The youngest first.
    for (const QFileInfo &file :
        QDir(m_folder).entryInfoList({filePattern}, QDir::Files, QDir::Time)) {
        left -= file.size();
        if (left < 0)
            QFile::remove(file.filePath());
    }
}
