#include "login/screen/AskedSchool.h"
#include "platform/services/BrowserWXApi.h"
#include "platform/storage/UserDefaults.h"
#include "support/NotedUrlOpener.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <csignal>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

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

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_program;

    QString path(const QString &name) const { return m_folder->filePath(name); }

    void start(const QStringList &arguments)
    {
        m_program->start(QStringLiteral(VANT_STUDENT), arguments);
    }

    void setEnvironment(const QString &name, const QString &value) const
    {
        QProcessEnvironment environment = m_program->processEnvironment();
        environment.insert(name, value);
        m_program->setProcessEnvironment(environment);
    }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s", qPrintable(file.errorString()));
    }

    //! Waits for the end with one line about the problem, which goes on after the program's name.
    void verifyRefusal(const QString &problem)
    {
        QVERIFY(m_program->waitForFinished(patienceMs));
        QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_program->exitCode(), 2);
        QCOMPARE(m_program->readAllStandardOutput(), "");
        const QString said = QString::fromUtf8(m_program->readAllStandardError());
        QVERIFY2(said.startsWith(u"vant-student: "_s + problem), qPrintable(said));
        QVERIFY2(said.count(u'\n') == 1 && said.endsWith(u'\n'), qPrintable(said));
        QVERIFY2(!said.contains(u"s3cr3t"_s), qPrintable(said));
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_program = std::make_unique<QProcess>();
        m_program->setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        setEnvironment(u"XDG_RUNTIME_DIR"_s, m_folder->path());
        // Nothing of the user's own session.
        setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    }

    void refusesABadStart_data()
    {
        QTest::addColumn<QStringList>("arguments"); //!< "@": the test's folder
        QTest::addColumn<QString>("problem"); //!< how the line goes on after the program's name
        const QString profile = u"--profile=@/profile"_s;
        QTest::newRow("push") << QStringList {u"--push"_s, u"[]"_s} << u"--push: "_s;
        QTest::newRow("no URL") << QStringList {u"somewhere"_s}
                                << u"not a URL: there is no scheme"_s;
        // A code that signs in is for nobody's journal.
        QTest::newRow("bad URL") << QStringList {u"wx1://oauth?code=s3cr3t%"_s}
                                 << u"not a URL: wx1:…\n"_s;
        QTest::newRow("two URLs") << QStringList {u"wx1://oauth?code=s3cr3t"_s, u"x"_s}
                                  << u"one URL at the most, not 2\n"_s;
        QTest::newRow("no file") << QStringList {profile, u"--config=@/none.toml"_s}
                                 << u"@/none.toml: "_s;
        QTest::newRow("key") << QStringList {profile, u"--config=@/school.toml"_s}
                             << u"@/school.toml:3: there is no key app.colour"_s;
        QTest::newRow("authorities")
            << QStringList {profile, u"--config=@/tls.toml"_s} << u"@/none.pem: "_s;
        QTest::newRow("profile") << QStringList {u"--profile=@/school.toml"_s} << u"--profile: "_s;
    }

    void refusesABadStart()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, problem);
        write(u"school.toml"_s, "[app]\nbuild = \"1\"\ncolour = \"red\"\n");
        write(u"tls.toml"_s, "[tls]\nextra_ca_file = \"" + path(u"none.pem"_s).toUtf8() + "\"\n");
        start(arguments.replaceInStrings(u"@"_s, m_folder->path()));
        verifyRefusal(problem.replace(u"@"_s, m_folder->path()));
        // Made or not, it is nobody else's.
        if (QFileInfo(path(u"profile"_s)).isDir())
            QCOMPARE(QFile::permissions(path(u"profile"_s)) & QFile::Permissions(0x0077),
                QFile::Permissions());
    }

    void refusesToRunAsRootUnasked()
    {
        if (::geteuid() != 0)
            QSKIP("the test's user is not root");
        QProcessEnvironment environment = m_program->processEnvironment();
        environment.remove(u"QTWEBENGINE_DISABLE_SANDBOX"_s);
        m_program->setProcessEnvironment(environment);
        start({u"--profile"_s, path(u"profile"_s)});
        verifyRefusal(u"the web engine does not keep pages apart from the system for root: "_s);
        QVERIFY(!QFile::exists(path(u"profile"_s)));
    }

    void refusesAProfileThatAnotherUses()
    {
        QDir(m_folder->path()).mkdir(u"profile"_s);
        const int folder = ::open(QFile::encodeName(path(u"profile"_s)).constData(), O_RDONLY);
        const auto letGo = qScopeGuard([folder] { ::close(folder); });
        QCOMPARE(::flock(folder, LOCK_EX | LOCK_NB), 0);
        start({u"--profile"_s, path(u"profile"_s)});
        verifyRefusal(u"the profile \"%1\" is in use"_s.arg(path(u"profile"_s)));
    }

    void aSecondStartHandsOverAndThePlatformEndsWithTheFirst_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("asked to end") << SIGTERM;
        QTest::newRow("killed") << SIGKILL;
    }

    void aSecondStartHandsOverAndThePlatformEndsWithTheFirst()
    {
        QFETCH(const int, signal);
        // A platform that takes its time.
        write(u"slow"_s,
            u"#!/bin/sh\nwhile [ ! -e '%1' ]; do sleep 0.05; done\nexec '%2' \"$@\"\n"_s
                .arg(path(u"go"_s), qEnvironmentVariable("VANT_SANDBOX"))
                .toUtf8());
        QFile::setPermissions(path(u"slow"_s), QFile::ReadOwner | QFile::ExeOwner);
        setEnvironment(u"VANT_SANDBOX"_s, path(u"slow"_s));
        m_program->setProcessChannelMode(QProcess::ForwardedChannels);
        const QStringList arguments {u"--sandbox"_s, u"--profile"_s, path(u"profile"_s)};
        start(arguments);
        const qint64 client = m_program->processId();
        TRY_VERIFY(childOf(client, "slow") != 0);
        const qint64 platform = childOf(client, "slow");

        // Whatever session it is started from, and before the first one has its window or after.
        // One that did not find the first would stay itself.
        QProcessEnvironment environment = m_program->processEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, path(u"elsewhere"_s));
        for (const bool isEarly : {true, false}) {
            QProcess second;
            second.setProcessEnvironment(environment);
            second.start(QStringLiteral(VANT_STUDENT), arguments + QStringList {u"wx1://oauth"_s});
            QVERIFY(second.waitForFinished(patienceMs));
            QVERIFY(second.exitStatus() == QProcess::NormalExit && second.exitCode() == 0);
            QVERIFY(m_program->state() == QProcess::Running && lives(platform));
            write(u"go"_s, {});
            // The client's own work begins when it has the platform's addresses.
            if (isEarly)
                TRY_VERIFY(QFile::exists(path(u"profile/settings.ini"_s)));
        }

        ::kill(pid_t(client), signal);
        QVERIFY(m_program->waitForFinished(patienceMs));
        TRY_VERIFY(!lives(platform));
    }

    // The client was closed while the user was in the browser.
    void aWeChatAnswerMayStartTheClient()
    {
        PlatformProcess platform;
        QVERIFY(QDir(m_folder->path()).mkdir(u"profile"_s));
        QUrl answer;
        {
            UserDefaults settings(path(u"profile/settings.ini"_s));
            NotedUrlOpener browser;
            BrowserWXApi wxApi(
                &browser, nullptr, &settings, platform.address() + u"wechat/authorise"_s);
            wxApi.registerApp(DeploymentConfiguration().wechat.appId, {});
            QVERIFY(wxApi.sendAuthReq(u"snsapi_userinfo"_s, u"123"_s));
            AskedSchool {u"厦门实验小学"_s, u"school01"_s, {}, {}, false, {}, {}}.keep(&settings);
            const QString page = browser.opened.constFirst().toString(QUrl::FullyEncoded);
            const QString content
                = QString::fromUtf8(platform.control(page.mid(platform.address().size())));
            const QRegularExpression link(u"id=\"btn-agree\" href=\"([^\"]*)\""_s);
            answer = QUrl(link.match(content).captured(1).replace(u"&amp;"_s, u"&"_s));
        }
        QVERIFY(answer.isValid() && !answer.isEmpty());
        write(u"school.toml"_s, platform.control(u"deployment.toml"_s));
        platform.takeRequests();
        m_program->setProcessChannelMode(QProcess::ForwardedChannels);
        start({u"--config"_s, path(u"school.toml"_s), u"--profile"_s, path(u"profile"_s),
            answer.toString(QUrl::FullyEncoded)});
        QString signedInAt;
        const auto hasSignedIn = [&] {
            for (const TracedRequest &request : platform.takeRequests()) {
                if (request.value(u"start"_s) == u"login4AppWeixin")
                    signedInAt = request.path;
            }
            return !signedInAt.isNull();
        };
        TRY_VERIFY(hasSignedIn());
        QCOMPARE(signedInAt, u"/school01/do"_s);
        ::kill(pid_t(m_program->processId()), SIGTERM);
        QVERIFY(m_program->waitForFinished(patienceMs));
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
