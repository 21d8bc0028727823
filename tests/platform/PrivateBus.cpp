#include "PrivateBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int startTimeout = 10'000;
constexpr int endTimeout = 5'000;

// No service folders: nothing of the machine's own is ever started on it.
constexpr auto configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

}

PrivateBus::PrivateBus()
{
    QFile file(m_folder.filePath(u"bus.conf"_s));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s", qPrintable(file.errorString()));
    file.write(QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8());
    file.close();

    m_daemon.setStandardErrorFile(m_folder.filePath(u"bus.log"_s));
    m_daemon.start(u"dbus-daemon"_s,
        {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + file.fileName()});
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(startTimeout)) { }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    if (m_address.isEmpty())
        qFatal("no bus: %s", qPrintable(m_daemon.errorString()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toUtf8());
}

PrivateBus::~PrivateBus()
{
    endKeyring();
    end(m_daemon);
}

bool PrivateBus::startKeyring()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &folder : {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s})
        environment.insert(folder, m_folder.path());
    m_keyring.setProcessEnvironment(environment);
    m_keyring.setStandardOutputFile(QProcess::nullDevice());
    m_keyring.setStandardErrorFile(m_folder.filePath(u"keyring.log"_s));
    m_keyring.start(u"gnome-keyring-daemon"_s,
        {u"--foreground"_s, u"--unlock"_s, u"--components=secrets"_s,
            u"--control-directory="_s + m_folder.path()});
    // The password of the keyring, which is made by it, is empty.
    m_keyring.write("\n");
    m_keyring.closeWriteChannel();
    const auto bus = QDBusConnection::connectToBus(m_address, u"PrivateBus"_s);
    return QTest::qWaitFor(
        [&] { return bus.interface()->isServiceRegistered(u"org.freedesktop.secrets"_s); },
        startTimeout);
}

void PrivateBus::endKeyring()
{
    end(m_keyring);
}

void PrivateBus::end(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(endTimeout)) {
        process.kill();
        process.waitForFinished(endTimeout);
    }
}
