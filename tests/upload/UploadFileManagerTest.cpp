#include "upload/protocol/OMUploadFileManager.h"

#include "platform/http/HTTPNetwork.h"
#include "platform/http/HTTPSessionManager.h"
#include "support/PlatformProcess.h"
#include "support/SwitchedReachability.h"
#include "support/Table.h"
#include "upload/protocol/ScratchFolder.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QUrlQuery>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int threeParts = 1'048'577;

//! "check", "chunk 1", "PUT 1", "done 1", "complete 3".
QString told(const TracedRequest &request)
{
    if (request.method == u"PUT")
        return u"PUT "_s
            + QUrlQuery(QString::fromUtf8(request.query)).queryItemValue(u"partNumber"_s);
    static const QMap<QString, QString> names {{u"/file/check"_s, u"check"_s},
        {u"/file/checkChunk"_s, u"chunk "_s}, {u"/file/chunkDone"_s, u"done "_s},
        {u"/file/complete"_s, u"complete "_s}};
    return names.value(request.path, request.path) + request.value(u"chunk"_s)
        + request.value(u"chunks"_s);
}

QByteArray clip()
{
    QByteArray bytes(threeParts, Qt::Uninitialized);
    for (int i = 0; i < threeParts; ++i)
        bytes[i] = char((i * 31) ^ (i >> 9));
    return bytes;
}

QString fileAt(const QString &path, qint64 size)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
        qFatal("%s", qPrintable(file.errorString()));
    return path;
}

}

class UploadFileManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_platform.reset();
        m_config.siteURl = m_platform.address(PlatformProcess::Upload).chopped(1);
        m_config.checkFile_server = u"/file/check"_s;
        m_config.checkChunk_server = u"/file/checkChunk"_s;
        m_config.upload_server = u"/file/chunkDone"_s;
        m_config.complete_upload_server = u"/file/complete"_s;
        m_config.column_key = u"册 &"_s;
        m_config.uploadType = u"2"_s;
        renew();
    }

    void cleanup() { m_manager.reset(); }

    void reportsInOrder_data()
    {
        const QString one = u"check, chunk 1, PUT 1, done 1, "_s;
        const QString two = one + u"chunk 2, PUT 2, done 2, "_s;
        const QString end = u"chunk 3, PUT 3, done 3, complete 3"_s;
        const QString notReported = one + u"chunk 2, PUT 2, "_s + end;
        Faults::rows({
            {"the check of the file answers HTML",
                R"({"path": "/file/check", "body": "<html>",
                    "headers": {"Content-Type": "text/html"}})",
                u"NO NO NO "_s, u"check, chunk 1, chunk 2, chunk 3"_s},
            // The part is put without a signature, which the storage refuses.
            {"the check of a part stalls",
                R"({"path": "/file/checkChunk", "params": {"chunk": 2}, "delay_ms": 8000})",
                u"NO NO "_s, notReported},
            {"a stored part answers 204", R"({"params": {"partNumber": 2}, "status": 204})",
                u"NO YES "_s, notReported},
            {"the last part is refused",
                R"({"params": {"partNumber": 3}, "status": 500, "unhandled": true})", u"NO "_s,
                two + u"chunk 3, PUT 3"_s},
            {"the reports of parts fail",
                R"({"path": "/file/chunkDone", "times": 3, "status": 500})", u"YES "_s, two + end},
            {"the check of the file is sent elsewhere, and dribbles",
                R"({"path": "/file/check", "status": 307, "headers": {"Location": "/file/check"},
                    "dribble_ms": 20})",
                u"YES "_s, u"check, "_s + two + end},
            {"the check of a part is cut off",
                R"({"path": "/file/checkChunk", "params": {"chunk": 2}, "cut": true})", u"NO NO "_s,
                notReported},
            {"the answer to a part is lost", R"({"params": {"partNumber": 2}, "lose": true})",
                u"NO YES "_s, notReported},
            {"a part's connection is reset", R"({"params": {"partNumber": 2}, "reset": true})",
                u"NO YES "_s, notReported},
            {"a part is half taken", R"({"params": {"partNumber": 2}, "half_body": true})",
                u"NO NO "_s, notReported},
            {"a report's connection is reset",
                R"({"path": "/file/chunkDone", "params": {"chunk": 2}, "reset": true})", u"YES "_s,
                two + end},
            {"the answer to the join is lost", R"({"path": "/file/complete", "lose": true})",
                u"NO "_s, two + end},
            {"the join answers a list",
                R"({"path": "/file/complete", "body": [{"isError": false}]})", u"NO "_s, two + end},
        });
    }

    void reportsInOrder()
    {
        const auto [fault, reports, requests] = Faults::row();
        addFault(fault);
        start(clip());
        TRY_VERIFY(m_isDone);
        QCOMPARE(m_reports, reports);
        QCOMPARE(wire(), requests);
        QVERIFY(m_result);
    }

    void asksOnlyForWhatIsMissing()
    {
        addFault(R"({"path": "/file/complete", "status": 500, "unhandled": true, "times": 2})");
        addFault(R"({"params": {"partNumber": 2}, "status": 500, "unhandled": true})");
        const std::pair<QString, QString> runs[] {
            {u"NO NO "_s,
                u"check, chunk 1, PUT 1, done 1, chunk 2, PUT 2, chunk 3, PUT 3, done 3, complete 3"_s},
            {u"NO "_s, u"check, chunk 1, chunk 2, PUT 2, done 2, chunk 3, complete 3"_s},
            {u"YES "_s, u"check, chunk 1, chunk 2, chunk 3, complete 3"_s},
            {u"YES "_s, u"check"_s},
        };
        for (const auto &[reports, requests] : runs) {
            renew();
            start(clip());
            TRY_COMPARE(m_reports, reports);
            QCOMPARE(wire(), requests);
        }
        QCOMPARE(m_result->first()[u"isUploaded"], QJsonValue(true));
        QVERIFY(storedObject() == clip());
    }

    void endsWithAReportForBadInput()
    {
        const std::tuple<QString, QString, bool> rows[] {
            {u"vanished"_s, m_config.siteURl, false},
            {u"pipe"_s, m_config.siteURl, false},
            {u"empty"_s, m_config.siteURl, true},
            {u"byte"_s, u"::not an address"_s, true},
        };
        for (const auto &[file, siteURl, hasResult] : rows) {
            renew();
            fileAt(m_folder->filePath(u"empty"_s), 0);
            fileAt(m_folder->filePath(u"byte"_s), 1);
            QCOMPARE(::mkfifo(qPrintable(m_folder->filePath(u"pipe"_s)), 0600), 0);
            m_config.siteURl = siteURl;
            start(UploadData::copyOf(m_folder->filePath(file)));
            TRY_COMPARE(m_reports, u"NO "_s);
            QVERIFY2(m_result.has_value() == hasResult, qPrintable(file));
        }
    }

    void survivesItsScratchFile()
    {
        for (const bool vanishes : {true, false}) {
            init();
            connect(m_manager.get(), &Manager::uploadProgressed, this, [&](int done) {
                if (done == 1 && vanishes)
                    m_manager->clearCahce();
                else if (done == 1)
                    QVERIFY(QFile::resize(m_manager->fileStreamer->filePath, 100));
            });
            const QString path = fileAt(m_folder->filePath(u"clip"_s), 4 * threeParts);
            start(UploadData::copyOf(path));
            TRY_VERIFY(m_isDone);
            QCOMPARE(m_reports.contains(u"NO"_s), !vanishes);
            QCOMPARE(m_reports.endsWith(u"YES "_s), vanishes);
        }
    }

    void endsInTheMiddle_data()
    {
        Moments::rows(
            {{"while the file is hashed", u"hashing"_s, {}}, {"in its own report", u"report"_s, {}},
                {"while a part is checked", u"/file/checkChunk"_s, u"chunk 1"_s},
                {"while the parts are joined", u"/file/complete"_s, u"complete 1"_s}});
    }

    void endsInTheMiddle()
    {
        const auto [moment, lastRequest] = Moments::row();
        QElapsedTimer ending;
        const auto end = [&] {
            ending.start();
            m_manager.reset();
        };
        const bool isHashing = moment == u"hashing"_s;
        if (isHashing)
            connect(m_manager.get(), &Manager::preparationProgressed, m_manager.get(), end);
        if (moment == u"report"_s)
            m_onReport = end;
        m_platform.addFault({{u"path"_s, moment}, {u"delay_ms"_s, 3000}});
        start(UploadData::copyOf(fileAt(m_folder->filePath(u"clip"_s), isHashing ? 1 << 25 : 1)));
        if (!lastRequest.isEmpty()) {
            TRY_VERIFY(wire().endsWith(lastRequest));
            end();
        }
        TRY_VERIFY(!m_manager);
        QVERIFY2(ending.elapsed() < 1000, qPrintable(QString::number(ending.elapsed())));
        QVERIFY(!QFile::exists(m_folder->filePath(u"uploadFile"_s)));
        QCOMPARE(m_reports, moment == u"report"_s ? u"YES "_s : QString());
    }

private:
    using Manager = OMUploadFileManager;
    using Faults = Table<QByteArray, QString, QString>; // reports, requests
    using Moments = Table<QString, QString>; // when it ends, the last request before

    void renew()
    {
        m_manager.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        m_scratch = std::make_unique<ScratchFolder>(m_folder->path());
        m_manager = std::make_unique<Manager>(&m_network, &m_reachability, m_scratch.get());
        connect(m_manager.get(), &Manager::uploadProgressed, this,
            [this](int done, int total) { m_isDone = done == total; });
        m_requests.clear();
        m_isDone = false;
        m_reports.clear();
        m_result.reset();
        m_onReport = [] {};
    }

    void start(const UploadData &data)
    {
        m_manager->startExeUploadWithData(
            data, true, {}, m_config, [this](bool success, const Manager::Result &result) {
                m_reports += success ? u"YES "_s : u"NO "_s;
                m_result = result;
                m_onReport();
            });
    }

    void addFault(const QByteArray &fault)
    {
        m_platform.addFault(QJsonDocument::fromJson(fault).object());
    }
    //! What was asked of the platform since init().
    QString wire()
    {
        m_requests += m_platform.takeRequests();
        QStringList words;
        for (const TracedRequest &request : std::as_const(m_requests))
            words << told(request);
        return words.join(u", "_s);
    }
    QByteArray storedObject()
    {
        const HTTPSessionManager manager(&m_network);
        return answerOf<QByteArray>([&](const auto &then) {
            manager.GET(
                m_result->first()[u"host"].toString(), {},
                [then](const auto &response) { then(response.body); },
                [then](const auto &, const auto &) { then({}); });
        });
    }

    PlatformProcess m_platform;
    HTTPNetwork m_network;
    SwitchedReachability m_reachability;
    SlicingUploadConfig m_config;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ScratchFolder> m_scratch;
    std::unique_ptr<Manager> m_manager;
    QList<TracedRequest> m_requests;
    bool m_isDone = false; //!< every part has come to its end
    QString m_reports;
    Manager::Result m_result;
    std::function<void()> m_onReport;
};

QTEST_GUILESS_MAIN(UploadFileManagerTest)
#include "UploadFileManagerTest.moc"
