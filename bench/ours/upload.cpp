// bench_upload BASE FILE [memory]: uploads a video as the client does after its export. With
// "memory" it tells the highest anonymous memory above that at the start, in bytes.

#include "common/AnonymousMemory.h"
#include "common/Clocks.h"
#include "platform/desktop/NetworkReachabilityManager.h"
#include "platform/http/HTTPNetwork.h"
#include "upload/protocol/OMUploadFileManager.h"
#include "upload/protocol/ScratchFolder.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <cstdio>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 2ms;

struct ReachableNetwork : NetworkReachabilityManager
{
    Status networkReachabilityStatus() const override { return Status::Unknown; }
};

//! Looks at the memory of this process from a thread of its own.
class MemoryWatch
{
public:
    explicit MemoryWatch(bool isWanted)
    {
        if (isWanted)
            m_thread = std::jthread([this](const std::stop_token &stop) {
                while (!stop.stop_requested()) {
                    m_highest = std::max(m_highest, anonymousMemory());
                    std::this_thread::sleep_for(lookInterval);
                }
            });
    }

    qint64 added()
    {
        if (!m_thread.joinable())
            return 0;
        m_thread.request_stop();
        m_thread.join();
        return m_highest - m_before;
    }

private:
    qint64 m_before = anonymousMemory();
    qint64 m_highest = m_before;
    std::jthread m_thread;
};

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 3)
        qFatal("usage: bench_upload BASE FILE [memory]");
    const QString file = QString::fromLocal8Bit(argv[2]);
    SlicingUploadConfig config;
    config.siteURl = QString::fromLocal8Bit(argv[1]);
    config.checkFile_server = u"/file/check"_s;
    config.checkChunk_server = u"/file/checkChunk"_s;
    config.upload_server = u"/file/chunkDone"_s;
    config.complete_upload_server = u"/file/complete"_s;
    config.column_key = u"bench"_s;
    config.uploadType = u"1"_s;

    // Beside the file, so that the copy stays on one disk.
    QTemporaryDir folder(QFileInfo(file).absolutePath() + u"/upload-XXXXXX"_s);
    HTTPNetwork network;
    ReachableNetwork reachability;
    ScratchFolder scratch(folder.path());
    auto manager = std::make_unique<OMUploadFileManager>(&network, &reachability, &scratch);
    double copied = 0;
    double prepared = 0;
    bool isUploaded = false;
    MemoryWatch memory(argc > 3);
    const Clocks clocks;
    QObject::connect(manager.get(), &OMUploadFileManager::preparationProgressed, &application,
        [&](qint64 done, qint64 total) {
            (2 * done <= total ? copied : prepared) = clocks.wall();
        });
    QObject::connect(manager.get(), &OMUploadFileManager::ended, &application, [&] {
        if (!isUploaded)
            qFatal("the upload failed");
        std::printf(
            R"({"wall_ms": %f, "cpu_ms": %f, "copied_ms": %f, "prepared_ms": %f, "added_bytes": %lld})",
            clocks.wall(), clocks.processor(), copied, prepared,
            static_cast<long long>(memory.added()));
        QCoreApplication::quit();
    });
    manager->startExeUploadWithData(UploadData::copyOf(file), true, {}, config,
        [&](bool success, const auto &) { isUploaded = success; });
    const int code = QCoreApplication::exec();
    manager.reset();
    return code;
}
