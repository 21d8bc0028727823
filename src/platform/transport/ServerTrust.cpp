#include "platform/transport/ServerTrust.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>

namespace {

QList<QSslCertificate> s_added;

}

QString ServerTrust::addAuthorities(const QString &pemFile)
{
    const QList<QSslCertificate> authorities = QSslCertificate::fromPath(pemFile, QSsl::Pem);
    if (authorities.isEmpty())
        return QStringLiteral("%1: no certificate authority could be read from it").arg(pemFile);
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificates(authorities);
    QSslConfiguration::setDefaultConfiguration(configuration);
    s_added += authorities;
    return {};
}

QList<QSslCertificate> ServerTrust::addedAuthorities()
{
    return s_added;
}

bool ServerTrust::isTrusted(const QList<QSslCertificate> &chain, const QString &host)
{
    return !s_added.isEmpty() && !chain.isEmpty() && QSslCertificate::verify(chain, host).isEmpty();
}
