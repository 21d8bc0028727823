#include "platform/storage/HTTPCookieStorage.h"

#include "platform/Logging.h"
#include "platform/storage/CookieProperties.h"
#include "platform/storage/PrivateFile.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

bool hasExpired(const QNetworkCookie &cookie)
{
    return !cookie.isSessionCookie() && cookie.expirationDate() <= QDateTime::currentDateTimeUtc();
}

}

HTTPCookieStorage::HTTPCookieStorage(const QString &filePath)
    : m_filePath(filePath)
{
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(saveInterval);
    connect(&m_saveTimer, &QTimer::timeout, this, [this] {
        if (m_isChanged)
            save();
    });
    load();
}

HTTPCookieStorage::~HTTPCookieStorage()
{
    if (m_isChanged)
        save();
}

QList<QNetworkCookie> HTTPCookieStorage::cookies() const
{
    QList<QNetworkCookie> live = allCookies();
    live.removeIf(hasExpired);
    return live;
}

bool HTTPCookieStorage::holdsCookieNamed(const QList<QByteArray> &names) const
{
    const QList<QNetworkCookie> held = allCookies();
    return std::any_of(held.cbegin(), held.cend(),
        [&names](const QNetworkCookie &cookie) { return names.contains(cookie.name()); });
}

void HTTPCookieStorage::setCookie(const QNetworkCookie &cookie)
{
    // The base's own update goes by name, domain and path, as a Set-Cookie header does.
    insertCookie(cookie);
    m_receivedAt.remove(identifierOf(cookie));
}

void HTTPCookieStorage::removeCookie(const QNetworkCookie &cookie)
{
    deleteCookie(cookie);
}

void HTTPCookieStorage::removeReceivedBefore(quint64 mark)
{
    for (const QNetworkCookie &cookie : allCookies()) {
        if (m_receivedAt.value(identifierOf(cookie)) <= mark)
            deleteCookie(cookie);
    }
    save();
}

void HTTPCookieStorage::removeReceivedSince(quint64 mark)
{
    for (const QNetworkCookie &cookie : allCookies()) {
        if (m_receivedAt.value(identifierOf(cookie)) > mark)
            deleteCookie(cookie);
    }
}

HTTPCookieStorage::Identifier HTTPCookieStorage::identifierOf(const QNetworkCookie &cookie)
{
    return cookie.domain() + u' ' + cookie.path() + u' ' + QString::fromUtf8(cookie.name());
}

bool HTTPCookieStorage::insertCookie(const QNetworkCookie &cookie)
{
    // The base deletes the old value first, which is no removal; an expired cookie is.
    m_inserting = true;
    const bool inserted = QNetworkCookieJar::insertCookie(cookie);
    m_inserting = false;
    scheduleSave();
    if (inserted)
        m_receivedAt.insert(identifierOf(cookie), ++m_received);
    else
        Q_EMIT cookieRemoved(cookie);
    return inserted;
}

bool HTTPCookieStorage::deleteCookie(const QNetworkCookie &cookie)
{
    const bool deleted = QNetworkCookieJar::deleteCookie(cookie);
    m_receivedAt.remove(identifierOf(cookie));
    if (deleted && !m_inserting) {
        scheduleSave();
        Q_EMIT cookieRemoved(cookie);
    }
    return deleted;
}

void HTTPCookieStorage::load()
{
    const auto content = PrivateFile::read(m_filePath);
    if (!content)
        return;
    QList<QNetworkCookie> cookies;
    for (const QJsonValue &properties : QJsonDocument::fromJson(*content).array()) {
        const QNetworkCookie cookie
            = CookieProperties::cookie(properties.toObject().toVariantMap());
        if (!cookie.name().isEmpty() && !cookie.isSessionCookie() && !hasExpired(cookie))
            cookies << cookie;
    }
    setAllCookies(cookies);
}

void HTTPCookieStorage::scheduleSave()
{
    // One write for all cookies of an answer.
    if (std::exchange(m_isChanged, true) || m_saveTimer.isActive())
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_isChanged)
                save();
        },
        Qt::QueuedConnection);
}

void HTTPCookieStorage::save()
{
    m_isChanged = false;
    m_saveTimer.start();
    QJsonArray kept;
    for (const QNetworkCookie &cookie : cookies()) {
        if (!cookie.isSessionCookie())
            kept << QJsonObject::fromVariantMap(CookieProperties::of(cookie));
    }
    if (!PrivateFile::write(m_filePath, QJsonDocument(kept).toJson()))
        qCWarning(lcPlatform) << "cookies could not be written to" << m_filePath;
}
