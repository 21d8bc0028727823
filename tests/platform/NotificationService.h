#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

//! Stands in for the desktop's notification service.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    NotificationService()
    {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }
    ~NotificationService() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    QStringList shown; //!< the first has the number 1
    QList<uint> closed; //!< by who posted it

public Q_SLOTS:
    uint Notify(const QString &, uint, const QString &, const QString &title, const QString &body,
        const QStringList &actions, const QVariantMap &, int)
    {
        shown << title + u'|' + body + u'|' + actions.value(0);
        return uint(shown.size());
    }
    void CloseNotification(uint id) { closed << id; }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString &action);
    void NotificationClosed(uint id, uint reason);

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(
        QDBusConnection::SessionBus, QStringLiteral("notification service"));
};
