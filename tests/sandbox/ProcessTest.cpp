#include "Sandbox.h"

#include "support/Patience.h"

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <fstream>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

std::vector<Json> linesOf(const QString &path)
{
    std::vector<Json> lines;
    std::ifstream file(path.toStdString());
    for (std::string line; std::getline(file, line);)
        lines.push_back(Json::parse(line));
    return lines;
}

}

//! The program: how it starts and ends and what it writes down. What spoils its answers the
//! client's tests use.
class ProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void badArgumentsAreNamed();
    void aPortIsNotShared();
    void aSignalEndsItWhileAnswersAreDue();
    void theTraceIsAppendedTo();
};

void ProcessTest::badArgumentsAreNamed()
{
    for (const QStringList &arguments : {QStringList {u"--bogus"_s}, QStringList {u"extra"_s},
             QStringList {u"--port"_s}, QStringList {u"--port"_s, u"80x"_s},
             QStringList {u"--port"_s, u"65536"_s}, QStringList {u"--schools"_s, u"-1"_s},
             QStringList {u"--trace"_s, u"/nonexistent/trace.jsonl"_s}}) {
        QProcess process;
        process.start(qEnvironmentVariable("VANT_SANDBOX"), arguments);
        QVERIFY(process.waitForFinished(patienceMs));
        COMPARE(process.exitCode(), 2);
        QCOMPARE(process.readAllStandardOutput(), ""_ba);
        const QByteArray errors = process.readAllStandardError();
        COMPARE(errors.count('\n'), 1);
        QVERIFY2(errors.contains(arguments.first().toUtf8()), errors);
    }
}

void ProcessTest::aPortIsNotShared()
{
    QProcess second;
    QByteArray port;
    {
        const Sandbox first;
        port = QByteArray::number(QUrl(first.address()).port());
        second.start(qEnvironmentVariable("VANT_SANDBOX"), {u"--port"_s, QString::fromUtf8(port)});
        QVERIFY(second.waitForFinished(patienceMs));
        COMPARE(second.exitCode(), 1);
        QVERIFY(second.readAllStandardError().contains(port));
    }
    // Free again it can be had, at all addresses.
    const Sandbox again({u"--port"_s, QString::fromUtf8(port)});
    for (int host = 1; host <= 9; ++host)
        QVERIFY2(again.status("/", host) != 0, again.base(host).c_str());
}

void ProcessTest::aSignalEndsItWhileAnswersAreDue()
{
    const QTemporaryDir folder;
    const QString trace = folder.filePath(u"trace"_s);
    for (const int signal : {SIGTERM, SIGINT}) {
        QFile::remove(trace);
        QProcess process;
        process.start(qEnvironmentVariable("VANT_SANDBOX"), {u"--trace"_s, trace});
        QVERIFY(process.waitForReadyRead(patienceMs));
        httplib::Client client(process.readLine().trimmed().toStdString());
        bool answered = false;
        std::thread waiting([&] { answered = bool(client.Get("/portal/slow.html?ms=100000")); });
        // The entry is on disk before its answer leaves.
        [&] { TRY_COMPARE(linesOf(trace).size(), 1u); }();
        ::kill(pid_t(process.processId()), signal);
        const bool ended = process.waitForFinished(patienceMs);
        process.kill();
        waiting.join();
        QVERIFY(ended && !answered);
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        COMPARE(process.exitCode(), 0);
    }
}

void ProcessTest::theTraceIsAppendedTo()
{
    const QTemporaryDir folder;
    const QString trace = folder.filePath(u"trace"_s);
    std::ofstream(trace.toStdString()) << "{\"method\":\"OLD\"}\n";
    const Sandbox sandbox({u"--trace"_s, trace, u"--latency"_s, u"50"_s});
    const auto before = std::chrono::steady_clock::now();
    sandbox.client().Put("/thing", std::string(70'000, 'x'), "video/mp4");
    QVERIFY(std::chrono::steady_clock::now() - before >= std::chrono::milliseconds(50));
    const std::vector<Json> lines = linesOf(trace);
    COMPARE(lines.size(), 2);
    COMPARE(lines[0]["method"], "OLD");
    COMPARE(lines[1]["body_size"], 70'000);
    QVERIFY2(!lines[1].contains("body"), "only forms are kept");
    COMPARE(sandbox.status("/_control/trace", 2), 404);
    COMPARE(sandbox.control("faults", R"({"path":"/","typo":1})"), 400);
}

QTEST_GUILESS_MAIN(ProcessTest)
#include "ProcessTest.moc"
