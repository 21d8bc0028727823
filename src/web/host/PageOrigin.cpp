#include "web/host/PageOrigin.h"

#include <QUrl>

using namespace Qt::StringLiterals;

QString PageOrigin::name(const QUrl &address)
{
    if (address.scheme() == u"blob")
        return name(QUrl(address.path()));
    // As it travels: two names that look alike are told apart.
    const QString authority = address.adjusted(QUrl::RemoveUserInfo).authority(QUrl::FullyEncoded);
    return authority.isEmpty() ? u"网页"_s : authority;
}
