#include "upload/protocol/FragmentQueue.h"

#include "platform/desktop/NetworkReachabilityManager.h"
#include "upload/Logging.h"
#include "upload/protocol/FragmentCalls.h"
#include "upload/protocol/OMFileStreamSeparation.h"

#include <QPointer>
#include <QSemaphore>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

// Overlapping parts hold their bytes; more of them wait.
constexpr int mostPartsInMemory = 16;

void log(const QString &line)
{
    if (!line.isEmpty())
        qCDebug(lcUpload).noquote() << line;
}

}

//! What the jobs wait at. Outlives the queue where a cancelled call still holds a part.
struct FragmentQueue::Gate
{
    QSemaphore room {mostPartsInMemory};
    QSemaphore begun; //!< the main thread has seen to the part: what its job does is known
    Job job = Job::GoesOn;
    QSemaphore ended; //!< the signals of the parts' ends
    std::atomic<bool> isClosed = false;

    void close()
    {
        isClosed = true;
        // There is one job, so one signal wakes it.
        for (QSemaphore *semaphore : {&room, &begun, &ended})
            semaphore->release();
    }
};

struct FragmentQueue::Part
{
    int number; //!< from 1
    bool isLast;
    QByteArray data;
    std::shared_ptr<Gate> gate;

    ~Part() { gate->room.release(); }
};

FragmentQueue::FragmentQueue(FragmentCalls *calls, std::shared_ptr<OMFileStreamSeparation> file,
    const QString &mineType, const NetworkReachabilityManager *reachability, Completion completion)
    : m_calls(calls)
    , m_file(std::move(file))
    , m_mineType(mineType)
    , m_reachability(reachability)
    , m_completion(std::move(completion))
    , m_gate(std::make_shared<Gate>())
{
    m_queue.setMaxThreadCount(1);
}

FragmentQueue::~FragmentQueue()
{
    // In this order: no further job may take what wakes the one that waits.
    m_queue.clear();
    m_gate->close();
    m_queue.waitForDone();
}

void FragmentQueue::start()
{
    m_count = int(m_file->streamFragments.size());
    if (m_count == 0) {
        // A file without bytes has no part whose end could be reported, and whoever waits must hear
        // something.
        QMetaObject::invokeMethod(
            this,
            [this] {
                const QPointer alive(this);
                m_completion(false);
                if (alive)
                    Q_EMIT ended();
            },
            Qt::QueuedConnection);
        return;
    }
    for (int i = 0; i < m_count; ++i) {
        qCDebug(lcUpload).noquote() << u"文件块数:%1"_s.arg(m_count);
        m_queue.start([this, i] { run(i); });
    }
}

void FragmentQueue::run(int index)
{
    m_gate->room.acquire();
    if (m_gate->isClosed) {
        m_gate->room.release();
        return;
    }
    SharedPart part(new Part {index + 1, index + 1 == m_count,
        m_file->readDateOfFragment(m_file->streamFragments[index]), m_gate});
    QMetaObject::invokeMethod(this, [this, gate = m_gate, part = std::move(part)] {
        gate->job = seeTo(part);
        gate->begun.release();
    });
    m_gate->begun.acquire();
    if (m_gate->job == Job::AwaitsTheEnd && !m_gate->isClosed)
        m_gate->ended.acquire();
}

FragmentQueue::Job FragmentQueue::seeTo(const SharedPart &part)
{
    if (!m_reachability->isReachable()) {
        endPart(false, u"检测chunk无网-> 信号+1"_s);
        return Job::GoesOn;
    }
    log(u"上传==检测文件块是否上传过"_s);
    m_calls->checkChunkHasUploadWithIndex(part->number, m_mineType,
        [alive = QPointer(this), part](
            bool isUploaded, const QString &authorization, const QString &date) {
            if (alive)
                alive->didCheck(part, isUploaded, authorization, date);
        });
    return Job::AwaitsTheEnd;
}

void FragmentQueue::didCheck(
    const SharedPart &part, bool isUploaded, const QString &authorization, const QString &date)
{
    if (isUploaded) {
        log(u"上传==上传过块"_s);
        if (part->isLast) {
            log(u"上传==判断块数正确，完成接口"_s);
            return join(u"上传完成-> 信号+1"_s, End::SignalFirst);
        }
        log(u"上传==判断块数错误+1"_s);
        return endPart(std::nullopt, u"已经完成-> 信号+1"_s, End::SignalFirst);
    }
    if (!m_reachability->isReachable())
        return endPart(false, u"上传无网-> 信号+1"_s);
    log(u"未上传==上传块"_s);
    m_calls->uploadData(part->data, part->number, m_mineType, authorization, date,
        [alive = QPointer(this), part, authorization, date](bool success) {
            if (alive)
                alive->didUpload(part, success, authorization, date);
        });
}

void FragmentQueue::didUpload(
    const SharedPart &part, bool success, const QString &authorization, const QString &date)
{
    if (!m_reachability->isReachable())
        return endPart(false, u"上传回调无网-> 信号+1"_s);
    if (!success)
        return endPart(false, {});
    log(u"上传==上传块成功，调用完成块接口"_s);
    // The answer does not count: what is missing shows when the parts are joined.
    m_calls->finishChuckWithIndex(part->number, m_mineType, authorization, date,
        [alive = QPointer(this), isLast = part->isLast](bool) {
            if (!alive)
                return;
            if (!isLast)
                return alive->endPart(std::nullopt, {});
            log(u"上传==判断块数正确，完成接口：有上传块"_s);
            alive->join(u"全部完成回调-> 信号+1"_s, End::LineFirst);
        });
}

void FragmentQueue::join(const QString &logLine, End order)
{
    m_calls->completeUpload([alive = QPointer(this), logLine, order](bool success) {
        if (alive)
            alive->endPart(success, logLine, order);
    });
}

void FragmentQueue::endPart(std::optional<bool> report, const QString &logLine, End order)
{
    const QPointer alive(this);
    if (report) {
        // Who hears of the end may end the whole upload.
        const Completion completion = m_completion;
        completion(*report);
        if (!alive)
            return;
    }
    if (order == End::LineFirst)
        log(logLine);
    m_gate->ended.release();
    if (order == End::SignalFirst)
        log(logLine);
    Q_EMIT partEnded(++m_ended, m_count);
    if (alive && m_ended == m_count)
        Q_EMIT ended();
}
