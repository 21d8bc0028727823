#include "upload/SlicingUpload.h"

#include "platform/http/HTTPTask.h"
#include "platform/media/PhotoAsset.h"
#include "session/SessionClient.h"
#include "support/PlatformProcess.h"
#include "support/Table.h"
#include "ui/shell/Shell.h"
#include "upload/SampleMedia.h"
#include "upload/UploadRun.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! What becomes of the items that were picked: against the school platform, with real photos and
//! clips.
class SlicingUploadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const auto path = [this](const QString &name) { return m_media.filePath(name); };
        SampleMedia::writeHeic(path(u"leaf.heic"_s), {64, 48});
        SampleMedia::writePhoto(path(u"tree.png"_s), "png", {80, 60});
        SampleMedia::writePhoto(path(u"flower.jpg"_s), "jpeg", {80, 60});
        SampleMedia::write(path(u"moving.gif"_s), "GIF89a, but damaged");
        SampleMedia::write(path(u"broken.heic"_s),
            "\0\0\0\x18"
            "ftypheic, but no more"_ba);
        const QString format = u"width=320,height=240"_s;
        SampleMedia::writeClip(path(u"short.mp4"_s), format, SampleMedia::Sound::None, 5);
        SampleMedia::writeClip(path(u"long.mp4"_s), format, SampleMedia::Sound::None, 90);
        QVERIFY(asset(u"long.mp4"_s).size > asset(u"short.mp4"_s).size);
    }

    void init()
    {
        m_platform.reset();
        m_queue.advance(2s); // the toast of the case before
        m_config.siteURl = m_platform.address(PlatformProcess::Upload);
        m_config.checkFile_server = u"file/check"_s;
        m_config.checkChunk_server = u"file/checkChunk"_s;
        m_config.upload_server = u"file/chunkDone"_s;
        m_config.complete_upload_server = u"file/complete"_s;
        m_config.maxFileSingleSizeLimit = double(asset(u"short.mp4"_s).size);
        m_reachability.status = NetworkReachabilityManager::Status::Unknown;
        m_logins = 0;
        m_loginIsSlow = false;
        m_client.account.session.resume();
        m_folder = std::make_unique<QTemporaryDir>();
        Device device = m_client.device;
        device.paths = ProfilePaths(m_folder->path());
        m_upload = std::make_unique<SlicingUpload>(device, &m_client.account.session, &m_shell);
        connect(m_upload.get(), &SlicingUpload::loginNeeded, this,
            [this](const SlicingUpload::LoggedIn &success) {
                ++m_logins;
                m_loggedIn = success;
                if (!m_loginIsSlow)
                    success();
            });
    }

    void cleanup() { m_upload.reset(); }

    void endsInOneAnswer_data()
    {
        const QString failed = u"上传失败"_s, tooLarge = u"上传失败：单个文件大小超过最大限制"_s;
        Picks::rows({
            {"photos of all kinds",
                {u"leaf.heic"_s, u"tree.png"_s, u"flower.jpg"_s, u"moving.gif"_s},
                {u"jpeg"_s, u"png"_s, u"jpeg"_s, u"jpeg"_s}, {}, {}},
            {"a photo that went", {u"gone.jpg"_s, u"tree.png"_s}, {u"png"_s}, {}, {}},
            {"a photo that cannot be read", {u"broken.heic"_s}, {}, failed, {}},
            {"a clip", {u"short.mp4"_s}, {u"mp4"_s}, {}, {}},
            {"a clip that is too large", {u"long.mp4"_s}, {}, tooLarge, {}},
            {"one too large", {u"long.mp4"_s, u"short.mp4"_s}, {u"mp4"_s}, {}, {}},
            {"both too large", {u"long.mp4"_s, u"long.mp4"_s}, {}, failed, {}},
            {"a clip that is none", {u"none.mp4"_s}, {}, failed, {}},
            {"a storage that refuses", {u"tree.png"_s, u"flower.jpg"_s}, {}, failed,
                {{u"method"_s, u"PUT"_s}, {u"status"_s, 500}, {u"times"_s, 2}}},
        });
    }

    void endsInOneAnswer()
    {
        const auto [picked, extensions, toast, fault] = Picks::row();
        if (!fault.isEmpty())
            m_platform.addFault(fault);
        QSignalSpy results(m_upload.get(), &SlicingUpload::onSlicingUpload);
        m_upload->didFinishPicking(m_config, assets(picked), u"asker"_s);
        QCOMPARE(m_logins, 1);
        QCOMPARE(m_shell.toast()->text(), u"上传中..."_s);
        TRY_VERIFY(results.count() == 1
            || (m_shell.toast()->isVisible() && m_shell.toast()->kind() == Toast::Kind::Error));
        QStringList uploaded;
        if (!results.isEmpty()) {
            const QString text = results[0][0].toString();
            QCOMPARE(results[0][1].toString(), u"asker"_s);
            for (const QJsonValue &one : QJsonDocument::fromJson(text.toUtf8()).array()) {
                uploaded << one[u"filePath"_s].toString().section(u'.', -1);
                QCOMPARE(one.toObject().keys(),
                    (QStringList {
                        u"filePath"_s, u"host"_s, u"isError"_s, u"isUploaded"_s, u"uploadId"_s}));
            }
        }
        QCOMPARE(uploaded, extensions);
        QCOMPARE(m_shell.toast()->isVisible() ? m_shell.toast()->text() : QString(), toast);
    }

    void asksForANetworkBeforeTheLogin()
    {
        m_reachability.status = NetworkReachabilityManager::Status::NotReachable;
        m_upload->didFinishPicking(m_config, assets({u"tree.png"_s}));
        QCOMPARE(m_shell.toast()->text(), u"没有网络连接..."_s);
        QCOMPARE(m_logins, 0);
    }

    void endsInTheMiddleOfARun()
    {
        for (const bool withTheProgram : {false, true}) {
            init();
            m_platform.addFault({{u"method"_s, u"PUT"_s}, {u"delay_ms"_s, 600'000}});
            QSignalSpy results(m_upload.get(), &SlicingUpload::onSlicingUpload);
            m_upload->didFinishPicking(m_config, assets({u"tree.png"_s}));
            bool isUnderWay = false;
            TRY_VERIFY([&] {
                for (const TracedRequest &request : m_platform.takeRequests())
                    isUnderWay |= request.path == u"/file/checkChunk";
                return isUnderWay;
            }());
            if (withTheProgram)
                m_upload.reset();
            else
                m_client.account.session.expire();
            // The connection goes with what was sent by it.
            TRY_VERIFY(m_network.findChildren<HTTPTask *>().isEmpty());
            QCOMPARE(results.count(), 0);
            QVERIFY(!m_shell.toast()->isVisible() || m_shell.toast()->text() != u"上传失败"_s);
        }
    }

    void neitherStartsNorKeepsAnythingForAnotherUser()
    {
        m_loginIsSlow = true;
        m_upload->didFinishPicking(m_config, assets({u"short.mp4"_s}));
        m_client.account.session.expire();
        m_loggedIn();
        m_loginIsSlow = false;
        m_client.account.session.resume();
        QSignalSpy results(m_upload.get(), &SlicingUpload::onSlicingUpload);
        m_upload->didFinishPicking(m_config, assets({u"short.mp4"_s}));
        TRY_COMPARE(results.count(), 1);
        QDir exports(m_folder->filePath(u"exports"_s));
        QCOMPARE(exports.entryList(QDir::Files).size(), 1);
        Q_EMIT m_client.account.session.userChanging();
        QCOMPARE(exports.entryList(QDir::Files).size(), 0);
    }

private:
    using Picks = Table<QStringList, QStringList, QString, QJsonObject>;

    PhotoAsset asset(const QString &name) const
    {
        const QString path = m_media.filePath(name);
        return {.filePath = path,
            .isVideo = name.endsWith(u".mp4"),
            .modified = {},
            .size = QFileInfo(path).size()};
    }
    QList<PhotoAsset> assets(const QStringList &names) const
    {
        QList<PhotoAsset> assets;
        for (const QString &name : names)
            assets << asset(name);
        return assets;
    }

    QTemporaryDir m_media;
    PlatformProcess m_platform;
    SessionClient m_client {m_platform.hosts()};
    ManualMainQueue &m_queue {m_client.mainQueue};
    Shell m_shell {m_queue};
    HTTPNetwork &m_network {m_client.network};
    SwitchedReachability &m_reachability {m_client.reachability};
    SlicingUploadConfig m_config;
    int m_logins = 0;
    bool m_loginIsSlow = false;
    SlicingUpload::LoggedIn m_loggedIn;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SlicingUpload> m_upload;
};

QTEST_GUILESS_MAIN(SlicingUploadTest)
#include "SlicingUploadTest.moc"
