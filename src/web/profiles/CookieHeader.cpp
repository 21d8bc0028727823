#include "web/profiles/CookieHeader.h"

#include "model/StringFormat.h"

#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString markerName = QStringLiteral("rblgin");
const QString markerValue = QStringLiteral("1");

}

QString CookieHeader::value(const QList<QNetworkCookie> &cookies)
{
    QString pairs = u""_s;
    for (const QNetworkCookie &cookie : cookies)
        pairs += StringFormat::format(u"%@=%@"_s, QString::fromUtf8(cookie.name()),
                     QString::fromUtf8(cookie.value()))
            + u';';
    return StringFormat::format(
        u"%@ %@"_s, pairs, StringFormat::format(u"%@=%@"_s, markerName, markerValue));
}

QList<QNetworkCookie> CookieHeader::beyond(
    const QList<QNetworkCookie> &known, const QString &header, const QUrl &page)
{
    QList<QNetworkCookie> cookies;
    for (const QString &pair : header.split(u';', Qt::SkipEmptyParts)) {
        QNetworkCookie cookie(
            pair.section(u'=', 0, 0).trimmed().toUtf8(), pair.section(u'=', 1).toUtf8());
        const bool isKnown = std::any_of(known.cbegin(), known.cend(),
            [&cookie](const QNetworkCookie &other) { return other.name() == cookie.name(); });
        if (isKnown)
            continue;
        cookie.setHttpOnly(true);
        cookie.setSecure(page.scheme() == u"https");
        cookie.setPath(page.path().isEmpty() ? u"/"_s : page.path(QUrl::FullyEncoded));
        cookies << cookie;
    }
    return cookies;
}
