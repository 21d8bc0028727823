#include "platform/desktop/ApplicationBadge.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

ApplicationBadge::ApplicationBadge(const QString &desktopFileName)
    : m_applicationUri(QStringLiteral("application://%1").arg(desktopFileName))
{
}

void ApplicationBadge::setNumber(int number)
{
    QDBusMessage update
        = QDBusMessage::createSignal(QStringLiteral("/com/canonical/Unity/LauncherEntry"),
            QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    update << m_applicationUri
           << QVariantMap {{QStringLiteral("count"), qint64(number)},
                  {QStringLiteral("count-visible"), number > 0}};
    QDBusConnection::sessionBus().send(update);
}
