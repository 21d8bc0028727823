#pragma once

#include <QList>
#include <QString>

class QSslCertificate;

//! Which servers are who they say: the system's certificate authorities, and those that the
//! deployment adds.
namespace ServerTrust {

//! Adds the authorities of a PEM file for every connection made from now on. Null text: done.
QString addAuthorities(const QString &pemFile);

//! The authorities that were added.
QList<QSslCertificate> addedAuthorities();

//! Whether authorities were added and vouch for this chain, leaf first, and for the host's name.
bool isTrusted(const QList<QSslCertificate> &chain, const QString &host);

}
