#include "platform/http/TcpNoDelay.h"

#include <QDir>

#ifdef Q_OS_LINUX
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

void TcpNoDelay::apply()
{
#ifdef Q_OS_LINUX
    const QStringList descriptors = QDir(QStringLiteral("/proc/self/fd"))
                                        .entryList(QDir::Files | QDir::System, QDir::Unsorted);
    for (const QString &descriptor : descriptors) {
        constexpr int on = 1;
        // Refused by whatever is no TCP socket.
        ::setsockopt(descriptor.toInt(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
#endif
}
