#include "PrivateBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// No service folders: nothing of the machine's own is ever started on it.
constexpr auto configuration = R"(<busconfig><type>session</type><listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/><allow receive_sender="*"/><allow own="*"/>
  </policy></busconfig>)";

}

PrivateBus::PrivateBus()
{
    for (const char *folder : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(folder, m_folder.path().toUtf8());
    QFile file(m_folder.filePath(u"bus.conf"_s));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s", qPrintable(file.errorString()));
    file.write(QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8());
    file.close();
    m_daemon.start(u"dbus-daemon"_s,
        {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + file.fileName()});
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(patienceMs)) { }
    const QByteArray address = m_daemon.readLine().trimmed();
    // Both at once: the library reads them together, once.
    for (const char *bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
        qputenv(bus, address);

    m_keyring.setStandardOutputFile(QProcess::nullDevice());
    m_keyring.setStandardErrorFile(m_folder.filePath(u"keyring.log"_s));
    m_keyring.start(
        u"gnome-keyring-daemon"_s, {u"--foreground"_s, u"--unlock"_s, u"--components=secrets"_s});
    // The password of the keyring, which is made by it, is empty.
    m_keyring.write("\n");
    m_keyring.closeWriteChannel();
    const auto isUp = [] {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(
            u"org.freedesktop.secrets"_s);
    };
    if (!waitFor(isUp))
        qFatal("no bus or no keyring: %s", qPrintable(m_daemon.errorString()));
}
