#pragma once

#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <optional>

class FragmentCalls;
class NetworkReachabilityManager;
class OMFileStreamSeparation;

//! Uploads the fragments of one file, one job each on a serial queue that waits for the answers of
//! its part. Its end, at any moment, stops the waiting and the reports.
//!
//! Each way that a part can end signals the semaphore once. Where there is no network for the first
//! call of a part its job does not wait for that signal: the next part then finds it, and parts may
//! overlap. That is deliberate.
class FragmentQueue : public QObject
{
    Q_OBJECT

public:
    using Completion = std::function<void(bool success)>;

    //! The completion may be called several times, on the main thread; the last call is the
    //! outcome.
    FragmentQueue(FragmentCalls *calls, std::shared_ptr<OMFileStreamSeparation> file,
        const QString &mineType, const NetworkReachabilityManager *reachability,
        Completion completion);
    ~FragmentQueue() override;

    void start();

Q_SIGNALS:
    //! Another part has come to its end, good or bad.
    void partEnded(int ended, int total);
    //! All have; nothing more is reported.
    void ended();

private:
    struct Gate;
    struct Part;
    using SharedPart = std::shared_ptr<Part>;

    void run(int index);
    //! What the job of a part does once the part has been seen to.
    enum class Job { AwaitsTheEnd, GoesOn };
    Job seeTo(const SharedPart &part);
    void didCheck(
        const SharedPart &part, bool isUploaded, const QString &authorization, const QString &date);
    void didUpload(
        const SharedPart &part, bool success, const QString &authorization, const QString &date);
    //! Which comes first at a part's end, its line in the log or the signal.
    enum class End { LineFirst, SignalFirst };
    void join(const QString &logLine, End order);
    void endPart(std::optional<bool> report, const QString &logLine, End order = End::LineFirst);

    FragmentCalls *m_calls;
    std::shared_ptr<OMFileStreamSeparation> m_file;
    QString m_mineType;
    const NetworkReachabilityManager *m_reachability;
    Completion m_completion;
    int m_count = 0;
    int m_ended = 0;
    std::shared_ptr<Gate> m_gate;
    QThreadPool m_queue;
};
