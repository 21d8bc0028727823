#include "upload/protocol/OMFileStreamSeparation.h"

#include "model/StringFormat.h"
#include "platform/storage/PrivateFile.h"
#include "upload/Logging.h"

#include <QCborArray>
#include <QCborValue>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QUuid>

#include <openssl/evp.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 digestBlock = 8192;
constexpr quint64 fragmentMask = OMFileStreamSeparation::fragmentLength - 1;

std::unique_ptr<QFile> opened(const QString &path, QIODevice::OpenMode mode)
{
    auto file = std::make_unique<QFile>(path);
    // A pipe would be waited for without end.
    if (!QFileInfo(path).isFile() || !file->open(mode | QIODevice::Unbuffered))
        return nullptr;
    return file;
}

QString newUuid()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

}

OMFileStreamSeparation::OMFileStreamSeparation() = default;
OMFileStreamSeparation::~OMFileStreamSeparation() = default;

QString OMFileStreamSeparation::fileKey()
{
    const QByteArray digest
        = QCryptographicHash::hash(newUuid().toUtf8(), QCryptographicHash::Md5).toHex();
    return QString::fromLatin1(digest)
        + u"%1"_s.arg(QRandomGenerator::system()->generate(), 8, 16, QChar(u'0'));
}

QString OMFileStreamSeparation::fileKeyMD5WithPath(const QString &path, const BlockWatcher &watcher)
{
    const auto file = opened(path, QIODevice::ReadOnly);
    if (!file)
        return {};
    // The toolkit's own MD5 takes an eighth longer, and big files wait for it.
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> digest(
        EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    if (!EVP_DigestInit_ex(digest.get(), EVP_md5(), nullptr))
        return {};
    QByteArray block(digestBlock, Qt::Uninitialized);
    qint64 done = 0;
    while (const qint64 length = file->read(block.data(), block.size())) {
        if (length < 0)
            return {};
        EVP_DigestUpdate(digest.get(), block.constData(), size_t(length));
        done += length;
        if (watcher && !watcher(done))
            return {};
    }
    QByteArray result(EVP_MD_get_size(EVP_md5()), Qt::Uninitialized);
    EVP_DigestFinal_ex(digest.get(), reinterpret_cast<unsigned char *>(result.data()), nullptr);
    return QString::fromLatin1(result.toHex());
}

void OMFileStreamSeparation::archerTheDictionary(
    const OMFileStreamSeparation &object, const QString &path)
{
    QCborArray fragments;
    for (const OMStreamFragment &fragment : object.streamFragments)
        fragments.append(fragment.encoded());
    const QCborMap archive {{u"fileName"_s, object.fileName},
        {u"fileSize"_s, qint64(object.fileSize)}, {u"fileStatus"_s, object.fileStatus()},
        {u"filePath"_s, object.filePath}, {u"md5String"_s, object.md5String},
        {u"streamFragments"_s, fragments}, {u"bizId"_s, object.bizId},
        {u"uploadDateSize"_s, qint64(object.uploadDateSize)},
        {u"progressRate"_s, object.progressRate}};
    if (PrivateFile::write(path, archive.toCborValue().toCbor()))
        qCDebug(lcUpload).noquote() << u"归档成功"_s;
}

std::unique_ptr<OMFileStreamSeparation> OMFileStreamSeparation::unArcherThePlist(
    const QString &path)
{
    const auto content = PrivateFile::read(path);
    if (!content)
        return nullptr;
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(*content, &error);
    // Of a file that is cut off the reader gives what it has found so far.
    if (error.error != QCborError::NoError || !value.isMap())
        return nullptr;
    const QCborMap archive = value.toMap();
    auto object = std::make_unique<OMFileStreamSeparation>();
    object->fileName = archive[u"fileName"_s].toString();
    // Before the fragments: the progress is to be the archived one, not counted anew.
    object->setFileStatus(int(archive[u"fileStatus"_s].toInteger()));
    object->fileSize = quint64(archive[u"fileSize"_s].toInteger());
    object->filePath = archive[u"filePath"_s].toString();
    object->md5String = archive[u"md5String"_s].toString();
    for (const QCborValue &fragment : archive[u"streamFragments"_s].toArray())
        object->streamFragments.append(OMStreamFragment::decoded(fragment.toMap()));
    object->bizId = archive[u"bizId"_s].toString();
    object->progressRate = archive[u"progressRate"_s].toDouble();
    object->uploadDateSize = quint64(archive[u"uploadDateSize"_s].toInteger());
    return object;
}

std::unique_ptr<OMFileStreamSeparation> OMFileStreamSeparation::initFileOperationAtPath(
    const QString &path, bool forReadOperation, const SlicingUploadConfig &config,
    const BlockWatcher &watcher)
{
    auto object = std::make_unique<OMFileStreamSeparation>();
    object->config = config;
    object->isReadOperation = forReadOperation;
    if (!forReadOperation && !QFileInfo::exists(path))
        QFile(path).open(QIODevice::WriteOnly);
    if (!object->getFileInfoAtPath(path, watcher))
        return nullptr;
    if (forReadOperation) {
        object->openForReading();
        object->cutFileForFragments();
    } else {
        object->writeFileHandle = opened(path, QIODevice::ReadWrite);
    }
    return object;
}

bool OMFileStreamSeparation::getFileInfoAtPath(const QString &path, const BlockWatcher &watcher)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        qCDebug(lcUpload).noquote() << StringFormat::format(u"文件不存在：%@"_s, path);
        return false;
    }
    filePath = path;
    fileSize = quint64(file.size());
    md5String = fileKeyMD5WithPath(path, watcher);
    bizId = newUuid();
    uploadDateSize = 0;
    progressRate = 0;
    fileName = file.fileName();
    setFileStatus(0);
    return true;
}

void OMFileStreamSeparation::cutFileForFragments()
{
    const quint64 count = (fileSize >> fragmentShift) + ((fileSize & fragmentMask) != 0 ? 1 : 0);
    streamFragments.clear();
    for (quint64 i = 0; i < count; ++i) {
        const quint64 offset = i << fragmentShift;
        streamFragments.append(
            {false, fileKey(), std::min(fragmentLength, fileSize - offset), offset});
    }
}

QByteArray OMFileStreamSeparation::readDateOfFragment(
    const std::optional<OMStreamFragment> &fragment)
{
    if (!readFileHandle && !openForReading())
        return {};
    if (!fragment) {
        closeFile();
        return {};
    }
    seekToFileOffset(fragment->fragementOffset);
    return readDataOfLength(fragment->fragmentSize);
}

QByteArray OMFileStreamSeparation::readDataOfLength(quint64 length)
{
    if (!readFileHandle)
        return {};
    // An archive may claim any length; what the file holds bounds what is made room for.
    const qint64 left = std::max(qint64(0), readFileHandle->size() - readFileHandle->pos());
    return readFileHandle->read(qint64(std::min(length, quint64(left))));
}

QByteArray OMFileStreamSeparation::readDataToEndOfFile()
{
    return readFileHandle ? readFileHandle->readAll() : QByteArray();
}

void OMFileStreamSeparation::writeData(const QByteArray &data)
{
    if (writeFileHandle)
        writeFileHandle->write(data);
}

void OMFileStreamSeparation::seekToFileOffset(quint64 offset)
{
    if (readFileHandle)
        readFileHandle->seek(qint64(offset));
}

quint64 OMFileStreamSeparation::offsetInFile() const
{
    return handle() ? quint64(handle()->pos()) : 0;
}

quint64 OMFileStreamSeparation::seekToEndOfFile()
{
    if (handle())
        handle()->seek(handle()->size());
    return offsetInFile();
}

void OMFileStreamSeparation::closeFile()
{
    (isReadOperation ? readFileHandle : writeFileHandle).reset();
}

QFile *OMFileStreamSeparation::handle() const
{
    return (isReadOperation ? readFileHandle : writeFileHandle).get();
}

bool OMFileStreamSeparation::openForReading()
{
    readFileHandle = opened(filePath, QIODevice::ReadOnly);
    return readFileHandle != nullptr;
}

void OMFileStreamSeparation::setFileStatus(int status)
{
    m_fileStatus = status;
    for (qsizetype i = 0; i < streamFragments.size(); ++i) {
        const bool isLast = i == streamFragments.size() - 1;
        if (!isLast && streamFragments[i].fragmentStatus)
            continue;
        // Deliberate: the first fragment that is still to come counts as done, the last one always.
        progressRate = double(i + 1) / double(streamFragments.size());
        uploadDateSize = isLast ? fileSize : quint64(i + 1) << fragmentShift;
        return;
    }
}
