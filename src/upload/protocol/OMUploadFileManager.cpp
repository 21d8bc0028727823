#include "upload/protocol/OMUploadFileManager.h"

#include "model/DictionaryMapper.h"
#include "model/StringFormat.h"
#include "platform/desktop/NetworkReachabilityManager.h"
#include "upload/Logging.h"
#include "upload/protocol/FragmentQueue.h"
#include "upload/protocol/ScratchFolder.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 progressStep = 4 * 1024 * 1024;

QString textOf(const std::optional<QJsonObject> &answer, const QString &key)
{
    return answer ? DictionaryMapper::text((*answer)[key]) : QString();
}

bool isYes(const QJsonValue &value)
{
    return DictionaryMapper::boolean(value).value_or(false);
}

bool isYes(const std::optional<QJsonObject> &answer, const QString &key)
{
    return answer && isYes((*answer)[key]);
}

bool isSuccess(const std::optional<QJsonObject> &answer)
{
    return answer && !isYes((*answer)[u"isError"_s]);
}

QString secondsSince1970()
{
    return QString::number(double(QDateTime::currentMSecsSinceEpoch()) / 1000, 'f', 0);
}

}

OMUploadFileManager::OMUploadFileManager(HTTPNetwork *network,
    const NetworkReachabilityManager *reachability, ScratchFolder *scratch, QObject *parent)
    : QObject(parent)
    , m_reachability(reachability)
    , m_scratch(scratch)
    , m_calls(network)
{
    m_worker.setMaxThreadCount(1);
}

OMUploadFileManager::~OMUploadFileManager()
{
    m_isEnding = true;
    m_fragments.reset();
    m_worker.clear();
    m_worker.waitForDone();
    if (!m_isCleared)
        clearCahce();
    // The last handle of a removed video frees its blocks, which takes too long for the main
    // thread.
    if (fileStreamer)
        QThreadPool::globalInstance()->start(
            [file = std::move(fileStreamer)]() mutable { file.reset(); });
}

void OMUploadFileManager::startExeUploadWithData(const UploadData &data, bool isVideo,
    const QString &fileExt, const SlicingUploadConfig &slicingUploadConfig, Completion completion)
{
    config = slicingUploadConfig;
    mineType = isVideo ? u"video/mp4"_s : u"image/jpeg"_s;
    const QString usual = isVideo ? u"mp4"_s : u"jpeg"_s;
    const QString ext = fileExt.isEmpty() ? usual : fileExt;
    const auto prepare = [this, data, ext, completion, config = config] {
        QMetaObject::invokeMethod(
            this, [this, ext, completion, streamer = prepared(data, ext, config)] {
                fileStreamer = streamer;
                didPrepare(ext, completion);
            });
    };
    // Later: a manager in whose report this one is started clears the folder before it returns.
    QMetaObject::invokeMethod(
        this, [this, prepare] { m_worker.start(prepare); }, Qt::QueuedConnection);
}

std::shared_ptr<OMFileStreamSeparation> OMUploadFileManager::prepared(
    const UploadData &data, const QString &ext, const SlicingUploadConfig &slicingUploadConfig)
{
    m_scratch->clear();
    const ScratchFolder::Preparation preparation(m_scratch, m_isEnding);
    if (m_isEnding)
        return nullptr;
    const QString path = u"%1/%2.%3"_s.arg(cahcePath(), secondsSince1970(), ext);
    const qint64 size = data.size();
    if (!data.writeAtomically(path, watcher(0, 2 * size)))
        return nullptr;
    auto streamer = OMFileStreamSeparation::initFileOperationAtPath(
        path, true, slicingUploadConfig, watcher(size, 2 * size));
    // Without its digest the service cannot tell the file from another.
    return streamer && !streamer->md5String.isNull() ? std::move(streamer) : nullptr;
}

BlockWatcher OMUploadFileManager::watcher(qint64 before, qint64 total)
{
    return [this, before, total, told = qint64(0)](qint64 bytesDone) mutable {
        if (bytesDone - told >= progressStep) {
            told = bytesDone;
            QMetaObject::invokeMethod(this, [this, done = before + bytesDone, total] {
                Q_EMIT preparationProgressed(done, total);
            });
        }
        return !m_isEnding;
    };
}

void OMUploadFileManager::didPrepare(const QString &ext, const Completion &completion)
{
    if (!fileStreamer) {
        qCWarning(lcUpload) << "the file to upload could not be written or read";
        return reportAndEnd(completion, false, std::nullopt);
    }
    hashKey = fileStreamer->md5String;
    if (!m_reachability->isReachable())
        return reportAndEnd(completion, false, std::nullopt);
    qCDebug(lcUpload).noquote() << u"上传==验证文件是否上传过"_s;
    checkFileServiceWithHash(hashKey, ext,
        [this, completion](bool isUploaded) { didCheckFile(isUploaded, completion); });
}

void OMUploadFileManager::didCheckFile(bool isUploaded, const Completion &completion)
{
    // Texts that the service did not give are empty for the page.
    const QJsonArray result {QJsonObject {{u"filePath"_s, filePath}, {u"host"_s, host},
        {u"isError"_s, false}, {u"isUploaded"_s, isUploaded}, {u"uploadId"_s, uploadId}}};
    if (isUploaded) {
        qCDebug(lcUpload).noquote() << u"上传==上传过直接回调"_s;
        const QPointer alive(this);
        reportAndClear(completion, true, result);
        if (alive)
            Q_EMIT ended();
        return;
    }
    if (!m_reachability->isReachable())
        return reportAndEnd(completion, false, result);
    qCDebug(lcUpload).noquote() << u"上传==上传文件"_s;
    uploadWithCompletion([this, completion, result](bool success) {
        qCDebug(lcUpload).noquote() << u"上传==上传文件结果"_s;
        reportAndClear(completion, success, result);
    });
}

void OMUploadFileManager::reportAndEnd(
    const Completion &completion, bool success, const Result &result)
{
    const QPointer alive(this);
    completion(success, result);
    if (alive)
        Q_EMIT ended();
}

void OMUploadFileManager::reportAndClear(
    const Completion &completion, bool success, const Result &result)
{
    const QPointer alive(this);
    completion(success, result);
    if (!alive)
        return;
    clearCahce();
    m_isCleared = true;
}

void OMUploadFileManager::uploadWithCompletion(Reported completion)
{
    m_fragments = std::make_unique<FragmentQueue>(
        this, fileStreamer, mineType, m_reachability, std::move(completion));
    connect(
        m_fragments.get(), &FragmentQueue::partEnded, this, &OMUploadFileManager::uploadProgressed);
    connect(m_fragments.get(), &FragmentQueue::ended, this, &OMUploadFileManager::ended);
    m_fragments->start();
}

void OMUploadFileManager::post(
    const QString &path, const HTTPParameters &parameters, UploadCalls::Answered answered)
{
    m_calls.post(
        StringFormat::format(u"%@%@"_s, config.siteURl, path), parameters, std::move(answered));
}

void OMUploadFileManager::checkFileServiceWithHash(
    const QString &hash, const QString &ext, Checked completion)
{
    const HTTPParameters parameters {{u"hashKey"_s, hash}, {u"ext"_s, ext},
        {u"column_key"_s, config.column_key}, {u"uploadType"_s, config.uploadType}};
    post(config.checkFile_server, parameters,
        [this, completion](const std::optional<QJsonObject> &answer) {
            host = textOf(answer, u"host"_s);
            uploadId = textOf(answer, u"uploadId"_s);
            filePath = textOf(answer, u"filePath"_s);
            completion(isYes(answer, u"isUploaded"_s));
        });
}

void OMUploadFileManager::checkChunkHasUploadWithIndex(
    int index, const QString &mineType, ChunkChecked completion)
{
    const HTTPParameters parameters {{u"hashKey"_s, hashKey}, {u"mainKey"_s, filePath},
        {u"chunk"_s, QString::number(index)}, {u"type"_s, mineType}, {u"uploadId"_s, uploadId}};
    post(config.checkChunk_server, parameters,
        [completion](const std::optional<QJsonObject> &answer) {
            completion(isYes(answer, u"isUploaded"_s), textOf(answer, u"authorization"_s),
                textOf(answer, u"date"_s));
        });
}

void OMUploadFileManager::uploadData(const QByteArray &data, int index, const QString &mineType,
    const QString &authorization, const QString &date, Reported completion)
{
    const QString address = StringFormat::format(
        u"%@?partNumber=%@&uploadId=%@"_s, host, QString::number(index), uploadId);
    m_calls.put(address,
        {{"Content-Type", mineType.toUtf8()}, {"x-oss-date", date.toUtf8()},
            {"Authorization", authorization.toUtf8()}},
        data, std::move(completion));
}

void OMUploadFileManager::finishChuckWithIndex(
    int index, const QString &, const QString &, const QString &, Reported completion)
{
    const HTTPParameters parameters {
        {u"hashKey"_s, hashKey}, {u"mainKey"_s, filePath}, {u"chunk"_s, QString::number(index)}};
    post(config.upload_server, parameters,
        [completion](const auto &answer) { completion(isSuccess(answer)); });
}

void OMUploadFileManager::completeUpload(Reported completion)
{
    const HTTPParameters parameters {{u"hashKey"_s, hashKey}, {u"mainKey"_s, filePath},
        {u"chunks"_s, int(fileStreamer->streamFragments.size())}};
    post(config.complete_upload_server, parameters,
        [completion](const auto &answer) { completion(isSuccess(answer)); });
}

QString OMUploadFileManager::cahcePath() const
{
    qCDebug(lcUpload).noquote() << StringFormat::format(u"存储路径:%@"_s, m_scratch->libraryPath());
    return m_scratch->make();
}

void OMUploadFileManager::clearCahce()
{
    m_scratch->clear();
}
