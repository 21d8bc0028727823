#pragma once

#include <QNetworkCookie>

//! The "Cookie" value of the portal's first request.
namespace CookieHeader {

//! "name=value;" for each cookie in turn, then a blank and the marker by which the portal knows a
//! first request.
QString value(const QList<QNetworkCookie> &cookies);

//! The cookies of such a value that are not among \a known, which the engine holds already, made
//! for this one page: their path is the page's, and scripts do not see them.
QList<QNetworkCookie> beyond(
    const QList<QNetworkCookie> &known, const QString &header, const QUrl &page);

}
