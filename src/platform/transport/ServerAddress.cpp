#include "platform/transport/ServerAddress.h"

#include <QHostAddress>
#include <QUrl>

bool ServerAddress::isLoopback(const QUrl &address)
{
    const QString host = address.host();
    return host == u"localhost" || QHostAddress(host).isLoopback();
}

bool ServerAddress::isOpenToOthers(const QUrl &address)
{
    return address.scheme() == u"http" && !isLoopback(address);
}
