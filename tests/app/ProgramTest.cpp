#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr int startTimeout = 30'000;
constexpr int endTimeout = 20'000;

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool lives(qint64 pid)
{
    // "12 (name) S …": one that has ended may still wait for its parent to notice.
    const QByteArray stat = read(u"/proc/%1/stat"_s.arg(pid));
    return !stat.isEmpty() && stat.mid(stat.lastIndexOf(')') + 2, 1) != "Z";
}

//! The child of that name, 0 when there is none.
qint64 childOf(qint64 parent, const QByteArray &name)
{
    const QByteArrayList children
        = read(u"/proc/%1/task/%1/children"_s.arg(parent)).simplified().split(' ');
    for (const QByteArray &child : children) {
        const qint64 pid = child.toLongLong();
        if (pid != 0 && read(u"/proc/%1/comm"_s.arg(pid)).trimmed() == name)
            return pid;
    }
    return 0;
}

}

//! The program as a user starts it, without a display.
class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void saysItsVersion();
    void refusesABadStart_data();
    void refusesABadStart();
    void saysWhyThePlatformDoesNotStart_data();
    void saysWhyThePlatformDoesNotStart();
    void thePlatformEndsWithTheClient_data();
    void thePlatformEndsWithTheClient();
    void aSecondStartHandsOver();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void start(const QStringList &arguments);
    //! Waits for the end with one line about the problem, which goes on after the program's name.
    void verifyRefusal(const QString &problem);
    void write(const QString &name, const QByteArray &content) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_program;
};

void ProgramTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_program = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder->path());
    // Nothing of the user's own session.
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    m_program->setProcessEnvironment(environment);
}

void ProgramTest::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s", qPrintable(file.errorString()));
}

void ProgramTest::start(const QStringList &arguments)
{
    m_program->start(QStringLiteral(VANT_STUDENT), arguments);
}

void ProgramTest::saysItsVersion()
{
    start({u"--version"_s});
    QVERIFY(m_program->waitForFinished(startTimeout));
    QCOMPARE(m_program->exitCode(), 0);
    QCOMPARE(m_program->readAllStandardOutput(), "vant-student " VANT_VERSION "\n");
}

void ProgramTest::refusesABadStart_data()
{
    QTest::addColumn<QStringList>("arguments"); //!< "@": the test's folder
    QTest::addColumn<QString>("problem"); //!< how the line goes on after the program's name

    const QString profile = u"--profile=@/profile"_s;
    const QString config = u"--config=@/school.toml"_s;
    QTest::newRow("unknown option") << QStringList {u"--colour"_s} << QString();
    QTest::newRow("push that is no object") << QStringList {u"--push"_s, u"[]"_s} << u"--push: "_s;
    QTest::newRow("not a URL") << QStringList {u"somewhere"_s} << u"not a URL: somewhere"_s;
    QTest::newRow("configuration that is not there")
        << QStringList {profile, u"--config=@/none.toml"_s} << u"@/none.toml: "_s;
    QTest::newRow("configuration with an unknown key")
        << QStringList {profile, config} << u"@/school.toml:3: there is no key app.colour"_s;
    QTest::newRow("authorities that are not there")
        << QStringList {profile, u"--config=@/tls.toml"_s} << u"@/none.pem: "_s;
    QTest::newRow("profile that is a file")
        << QStringList {u"--profile=@/school.toml"_s} << u"--profile: "_s;
    QTest::newRow("profile without a name") << QStringList {u"--profile="_s} << u"--profile: "_s;
}

void ProgramTest::refusesABadStart()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, problem);
    write(u"school.toml"_s, "[app]\nbuild = \"1\"\ncolour = \"red\"\n");
    write(u"tls.toml"_s, "[tls]\nextra_ca_file = \"" + path(u"none.pem"_s).toUtf8() + "\"\n");
    start(arguments.replaceInStrings(u"@"_s, m_folder->path()));
    verifyRefusal(problem.replace(u"@"_s, m_folder->path()));
}

void ProgramTest::verifyRefusal(const QString &problem)
{
    QVERIFY(m_program->waitForFinished(startTimeout));
    QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_program->exitCode(), 2);
    QCOMPARE(m_program->readAllStandardOutput(), "");
    const QString said = QString::fromUtf8(m_program->readAllStandardError());
    QVERIFY2(said.startsWith(u"vant-student: "_s + problem), qPrintable(said));
    QVERIFY2(said.count(u'\n') == 1 && said.endsWith(u'\n'), qPrintable(said));
}

void ProgramTest::saysWhyThePlatformDoesNotStart_data()
{
    QTest::addColumn<QString>("script"); //!< null: there is no such program
    QTest::addColumn<QString>("problem");
    QTest::newRow("missing") << QString() << u"@ does not start: "_s;
    QTest::newRow("ends at once")
        << u"#!/bin/sh\nexit 3\n"_s << u"@ does not start: it ended with code 3\n"_s;
    QTest::newRow("says something else")
        << u"#!/bin/sh\necho hello\nexec sleep 60\n"_s << u"at \"hello\" does not answer: "_s;
}

void ProgramTest::saysWhyThePlatformDoesNotStart()
{
    QFETCH(QString, script);
    QFETCH(QString, problem);
    const QString platform = path(u"platform"_s);
    if (!script.isNull()) {
        write(u"platform"_s, script.toUtf8());
        QFile::setPermissions(platform, QFile::ReadOwner | QFile::ExeOwner);
    }
    QProcessEnvironment environment = m_program->processEnvironment();
    environment.insert(u"VANT_SANDBOX"_s, platform);
    m_program->setProcessEnvironment(environment);
    start({u"--sandbox"_s, u"--profile"_s, path(u"profile"_s)});
    verifyRefusal(u"the school platform "_s + problem.replace(u"@"_s, platform));
}

void ProgramTest::thePlatformEndsWithTheClient_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("asked to end") << SIGTERM;
    QTest::newRow("killed") << SIGKILL;
}

void ProgramTest::thePlatformEndsWithTheClient()
{
    QFETCH(int, signal);
    m_program->setProcessChannelMode(QProcess::ForwardedChannels);
    start({u"--sandbox"_s, u"--profile"_s, path(u"profile"_s)});
    QVERIFY(m_program->waitForStarted());
    const qint64 client = m_program->processId();
    QTRY_VERIFY_WITH_TIMEOUT(childOf(client, "vant-sandbox") != 0, startTimeout);
    const qint64 platform = childOf(client, "vant-sandbox");
    // The client's own work has begun: it has the platform's addresses.
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(u"profile/settings.ini"_s)), startTimeout);
    QVERIFY(lives(platform));

    ::kill(pid_t(client), signal);
    QVERIFY(m_program->waitForFinished(endTimeout));
    QTRY_VERIFY_WITH_TIMEOUT(!lives(platform), endTimeout);
}

void ProgramTest::aSecondStartHandsOver()
{
    const QStringList arguments {u"--sandbox"_s, u"--profile"_s, path(u"profile"_s)};
    m_program->setProcessChannelMode(QProcess::ForwardedChannels);
    start(arguments);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(u"profile/settings.ini"_s)), startTimeout);

    QProcess second;
    second.setProcessEnvironment(m_program->processEnvironment());
    second.start(QStringLiteral(VANT_STUDENT), arguments + QStringList {u"wx1://oauth?code=1"_s});
    QVERIFY(second.waitForFinished(startTimeout));
    QCOMPARE(second.exitStatus(), QProcess::NormalExit);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(m_program->state(), QProcess::Running);
    m_program->kill();
    QVERIFY(m_program->waitForFinished(endTimeout));
}

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
