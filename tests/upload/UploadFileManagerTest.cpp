#include "upload/OMUploadFileManager.h"

#include "support/Patience.h"
#include "support/PlatformProcess.h"
#include "upload/ScratchFolder.h"
#include "upload/UploadProbe.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int threeParts = 1'048'577;

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
    void init();
    void cleanup() { m_manager.reset(); }
    void speaksToServiceAndStorage();
    void reportsInOrder_data();
    void reportsInOrder();
    void partsOverlapAfterAnUnmatchedSignal();
    void asksOnlyForWhatIsMissing();
    void endsWithAReportForBadInput();
    void survivesItsScratchFile();
    void endsInTheMiddle_data();
    void endsInTheMiddle();
    void holdsNoBigFileInMemory();

private:
    using Manager = OMUploadFileManager;

    void renew();
    void start(const UploadData &data);
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
            words << UploadProbe::told(request);
        return words.join(u", "_s);
    }
    bool holdsObject(const QByteArray &bytes)
    {
        const QNetworkRequest request(QUrl(m_result->first()[u"host"].toString()));
        const std::unique_ptr<QNetworkReply> reply(m_network.get(request));
        return QTest::qWaitFor([&] { return reply->isFinished(); }, patienceMs)
            && reply->readAll() == bytes;
    }

    PlatformProcess m_platform;
    QNetworkAccessManager m_network;
    ScriptedReachability m_reachability;
    SlicingUploadConfig m_config;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ScratchFolder> m_scratch;
    std::unique_ptr<Manager> m_manager;
    QList<TracedRequest> m_requests;
    QString m_progress;
    bool m_isDone = false; //!< every part has come to its end
    QString m_reports;
    Manager::Result m_result;
    std::function<void()> m_onReport;
};

void UploadFileManagerTest::init()
{
    m_platform.reset();
    m_reachability.script.clear();
    m_config.siteURl = m_platform.address(PlatformProcess::Upload).chopped(1);
    m_config.checkFile_server = u"/file/check"_s;
    m_config.checkChunk_server = u"/file/checkChunk"_s;
    m_config.upload_server = u"/file/chunkDone"_s;
    m_config.complete_upload_server = u"/file/complete"_s;
    m_config.column_key = u"册 &"_s;
    m_config.uploadType = u"2"_s;
    renew();
}

void UploadFileManagerTest::renew()
{
    m_manager.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    m_scratch = std::make_unique<ScratchFolder>(m_folder->path());
    m_manager = std::make_unique<Manager>(&m_network, &m_reachability, m_scratch.get());
    connect(m_manager.get(), &Manager::uploadProgressed, this, [this](int done, int total) {
        m_progress += u"%1/%2 "_s.arg(done).arg(total);
        m_isDone = done == total;
    });
    m_requests.clear();
    m_progress.clear();
    m_isDone = false;
    m_reports.clear();
    m_result.reset();
    m_onReport = [] {};
}

void UploadFileManagerTest::start(const UploadData &data)
{
    m_manager->startExeUploadWithData(
        data, true, {}, m_config, [this](bool success, const Manager::Result &result) {
            m_reports += success ? u"YES "_s : u"NO "_s;
            m_result = result;
            m_onReport();
        });
}

void UploadFileManagerTest::speaksToServiceAndStorage()
{
    const QByteArray bytes = clip();
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex();
    QString scratch;
    m_onReport = [&] { scratch = QDir(m_manager->cahcePath()).entryList(QDir::Files).join(u' '); };
    start(bytes);
    TRY_VERIFY(m_isDone);
    QCOMPARE(m_reports, u"YES "_s);
    QCOMPARE(wire(),
        u"check, chunk 1, PUT 1, done 1, chunk 2, PUT 2, done 2, chunk 3, PUT 3, done 3, complete 3"_s);
    QCOMPARE(m_progress, u"1/3 2/3 3/3 "_s);
    QVERIFY(QRegularExpression(u"^\\d{10}\\.mp4$"_s).match(scratch).hasMatch());
    QVERIFY(!QFile::exists(m_folder->filePath(u"uploadFile"_s)));

    const QString key = m_manager->filePath;
    const QString id = m_manager->uploadId;
    const QJsonObject result {{u"filePath"_s, key}, {u"host"_s, m_manager->host},
        {u"isError"_s, false}, {u"isUploaded"_s, false}, {u"uploadId"_s, id}};
    QCOMPARE(m_result, QJsonArray {result});
    QVERIFY(holdsObject(bytes));

    const QByteArray file = "hashKey=" + hash + "&mainKey=" + QUrl::toPercentEncoding(key);
    QCOMPARE(
        m_requests[0].body, "column_key=%E5%86%8C%20%26&ext=mp4&hashKey=" + hash + "&uploadType=2");
    QCOMPARE(m_requests[0].headers[u"content-type"_s], u"application/x-www-form-urlencoded"_s);
    QCOMPARE(m_requests[4].body, "chunk=2&" + file + "&type=video%2Fmp4&uploadId=" + id.toUtf8());
    QCOMPARE(m_requests[6].body, "chunk=2&" + file);
    QCOMPARE(m_requests[10].body, "chunks=3&" + file);
    const TracedRequest put = m_requests[5];
    QCOMPARE(put.query, "partNumber=2&uploadId=" + id.toUtf8());
    QCOMPARE(put.headers[u"content-type"_s], u"video/mp4"_s);
    QVERIFY(put.headers.contains(u"authorization"_s) && put.headers.contains(u"x-oss-date"_s));
    QCOMPARE(put.bodySize, 524288);
    QCOMPARE(m_requests[8].bodySize, 1);
    // One connection to the service, and one to the storage.
    for (const TracedRequest &request : std::as_const(m_requests))
        QCOMPARE(request.peer, (request.method == u"PUT" ? put : m_requests[0]).peer);
}

void UploadFileManagerTest::reportsInOrder_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("reachability");
    QTest::addColumn<QString>("reports");
    QTest::addColumn<QString>("requests");

    const QString one = u"check, chunk 1, PUT 1, done 1, "_s;
    const QString two = one + u"chunk 2, PUT 2, done 2, "_s;
    const QString end = u"chunk 3, PUT 3, done 3, complete 3"_s;
    const QString notReported = one + u"chunk 2, PUT 2, "_s + end;
    const QByteArray check = R"({"path": "/file/check")";
    const QByteArray part = R"({"path": "/file/checkChunk", "params": {"chunk": 2})";
    const QByteArray join = R"({"path": "/file/complete")";
    const QByteArray html = R"(, "body": "<html>", "headers": {"Content-Type": "text/html"}})";
    const auto row = [](const char *name, const QByteArray &fault, const QString &reachability,
                         const QString &reports, const QString &requests) {
        QTest::newRow(name) << fault << reachability << reports << requests;
    };
    const QString there;
    row("the check of the file answers HTML", check + html, there, u"NO NO NO "_s,
        u"check, chunk 1, chunk 2, chunk 3"_s);
    // The part is put without a signature, which the storage refuses.
    row("the check of a part stalls", part + R"(, "delay_ms": 8000})", there, u"NO NO "_s,
        notReported);
    row("a stored part answers 204", R"({"params": {"partNumber": 2}, "status": 204})", there,
        u"NO YES "_s, notReported);
    row("the last part is refused",
        R"({"params": {"partNumber": 3}, "status": 500, "unhandled": true})", there, u"NO "_s,
        two + u"chunk 3, PUT 3"_s);
    row("the reports of parts fail", R"({"path": "/file/chunkDone", "times": 3, "status": 500})",
        there, u"YES "_s, two + end);
    row("the join answers HTML", join + html, there, u"NO "_s, two + end);

    row("the join is an error, as text", join + R"(, "body": {"isError": "1"}})", there, u"NO "_s,
        two + end);
    row("the file is there, as a number", check + R"(, "body": {"isUploaded": 1}})", there,
        u"YES "_s, u"check"_s);
    row("the join answers a list", join + R"(, "body": [{"isError": false}]})", there, u"NO "_s,
        two + end);

    // Asked at the start, after the check, then for each part up to three times.
    const QByteArray none;
    row("no network", none, u"-"_s, u"NO "_s, {});
    row("none after the check", none, u"+-"_s, u"NO "_s, u"check"_s);
    row("none for all parts", none, u"++---"_s, u"NO NO NO "_s, u"check"_s);
    row("none for the last part", none, u"++++++++-"_s, u"NO "_s, two.chopped(2));
    row("none after the check of a part", none, u"++++++-"_s, u"NO NO "_s,
        one + u"chunk 2, "_s + end);
    row("none after a part", none, u"+++++++-"_s, u"NO YES "_s, notReported);
}

void UploadFileManagerTest::reportsInOrder()
{
    QFETCH(QByteArray, fault);
    QFETCH(QString, reachability);
    QFETCH(QString, reports);
    QFETCH(QString, requests);
    if (!fault.isEmpty())
        addFault(fault);
    m_reachability.script = {reachability.cbegin(), reachability.cend()};
    start(clip());
    const bool reachesTheParts = reports.size() > 4 || requests.contains(u"chunk"_s);
    TRY_VERIFY(reachesTheParts ? m_isDone : !m_reports.isEmpty());
    QCOMPARE(m_reports, reports);
    QCOMPARE(wire(), requests);
    QCOMPARE(m_result.has_value(), reachability != u"-"_s);
}

void UploadFileManagerTest::partsOverlapAfterAnUnmatchedSignal()
{
    for (const bool isFirstReachable : {true, false}) {
        init();
        if (!isFirstReachable)
            m_reachability.script = {u'+', u'+', u'-'};
        addFault(R"({"path": "/file/checkChunk", "params": {"chunk": 2}, "delay_ms": 500})");
        start(clip());
        TRY_VERIFY(m_isDone);
        const QString requests = wire();
        QCOMPARE(requests.indexOf(u"chunk 3"_s) > requests.indexOf(u"PUT 2"_s), isFirstReachable);
    }
}

void UploadFileManagerTest::asksOnlyForWhatIsMissing()
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
    QVERIFY(holdsObject(clip()));
}

void UploadFileManagerTest::endsWithAReportForBadInput()
{
    const struct
    {
        QString file;
        QString siteURl;
        bool hasResult;
    } rows[] {
        {u"vanished"_s, m_config.siteURl, false},
        {u"."_s, m_config.siteURl, false},
        {u"pipe"_s, m_config.siteURl, false},
        {u"empty"_s, m_config.siteURl, true},
        {u"byte"_s, QString(), true},
        {u"byte"_s, u"::not an address"_s, true},
    };
    for (const auto &row : rows) {
        renew();
        fileAt(m_folder->filePath(u"empty"_s), 0);
        fileAt(m_folder->filePath(u"byte"_s), 1);
        QCOMPARE(::mkfifo(qPrintable(m_folder->filePath(u"pipe"_s)), 0600), 0);
        m_config.siteURl = row.siteURl;
        start(UploadData::copyOf(m_folder->filePath(row.file)));
        TRY_COMPARE(m_reports, u"NO "_s);
        QVERIFY2(m_result.has_value() == row.hasResult, qPrintable(row.file + row.siteURl));
    }
}

void UploadFileManagerTest::survivesItsScratchFile()
{
    for (const bool vanishes : {true, false}) {
        init();
        connect(m_manager.get(), &Manager::uploadProgressed, this, [&](int done) {
            if (done == 1 && vanishes)
                m_manager->clearCahce();
            else if (done == 1)
                QVERIFY(QFile::resize(m_manager->fileStreamer->filePath, 100));
        });
        // Taken: the file itself becomes the scratch file.
        const QString path = fileAt(m_folder->filePath(u"clip"_s), 4 * threeParts);
        start(UploadData::taking(path));
        TRY_VERIFY(m_isDone);
        QVERIFY(!QFile::exists(path));
        QCOMPARE(m_reports.contains(u"NO"_s), !vanishes);
        QCOMPARE(m_reports.endsWith(u"YES "_s), vanishes);
    }
}

void UploadFileManagerTest::endsInTheMiddle_data()
{
    QTest::addColumn<QString>("moment");
    QTest::addColumn<QString>("lastRequest");
    QTest::newRow("while the file is hashed") << u"hashing"_s << u""_s;
    QTest::newRow("in its own report") << u"report"_s << u""_s;
    QTest::newRow("while a part is checked") << u"/file/checkChunk"_s << u"chunk 1"_s;
    QTest::newRow("while the parts are joined") << u"/file/complete"_s << u"complete 1"_s;
}

void UploadFileManagerTest::endsInTheMiddle()
{
    QFETCH(QString, moment);
    QFETCH(QString, lastRequest);
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

void UploadFileManagerTest::holdsNoBigFileInMemory()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("the sanitizer keeps what has been freed");
#endif
    constexpr qint64 size = 80 * 1024 * 1024;
    constexpr qint64 most = 32 * 1024 * 1024;
    const QString path = fileAt(m_folder->filePath(u"clip"_s), size);
    const qint64 before = UploadProbe::anonymousBytes();
    qint64 highest = 0;
    const auto look = [&] { highest = std::max(highest, UploadProbe::anonymousBytes()); };
    connect(m_manager.get(), &Manager::preparationProgressed, this, look);
    connect(m_manager.get(), &Manager::uploadProgressed, this, look);
    // Undisturbed by a test's way of waiting, which pauses between the many small steps.
    QEventLoop loop;
    m_onReport = [&] { loop.quit(); };
    start(UploadData::copyOf(path));
    loop.exec();
    QCOMPARE(m_reports, u"YES "_s);
    QVERIFY2(highest - before < most, qPrintable(QString::number(highest - before)));
}

QTEST_GUILESS_MAIN(UploadFileManagerTest)
#include "UploadFileManagerTest.moc"
