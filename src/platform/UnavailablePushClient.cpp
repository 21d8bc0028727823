#include "platform/UnavailablePushClient.h"

void UnavailablePushClient::startSdk(const QString &, const QString &, const QString &)
{
    QMetaObject::invokeMethod(
        this, [this] { Q_EMIT didOccurError(QStringLiteral("push is not available")); },
        Qt::QueuedConnection);
}

void UnavailablePushClient::registerRemoteNotification(int) { }
