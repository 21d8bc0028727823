#pragma once

#include <QHash>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QTimer>

#include <chrono>

//! The cookies that all requests of the shell share; persistent ones survive a restart in a file of
//! mode 0600. A change is written before control returns to the event loop, further ones within
//! saveInterval: a page may set cookies in a loop.
class HTTPCookieStorage : public QNetworkCookieJar
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds saveInterval {250};

    explicit HTTPCookieStorage(const QString &filePath);
    //! Writes what is not written yet.
    ~HTTPCookieStorage() override;

    //! All that have not expired.
    QList<QNetworkCookie> cookies() const;
    //! Whether a cookie of one of these names is held, an expired one included.
    bool holdsCookieNamed(const QList<QByteArray> &names) const;
    void setCookie(const QNetworkCookie &cookie);
    void removeCookie(const QNetworkCookie &cookie);

    //! A moment among the answers that bring cookies.
    quint64 mark() const { return m_received; }
    //! Removes all cookies but those that answers to the shell's own requests have brought since
    //! the mark; on disk too, at once.
    void removeReceivedBefore(quint64 mark);
    //! Removes what they have brought since the mark.
    void removeReceivedSince(quint64 mark);

Q_SIGNALS:
    void cookieRemoved(const QNetworkCookie &cookie);

protected:
    bool insertCookie(const QNetworkCookie &cookie) override;
    bool deleteCookie(const QNetworkCookie &cookie) override;

private:
    using Identifier = QString;

    static Identifier identifierOf(const QNetworkCookie &cookie);
    void load();
    void scheduleSave();
    void save();

    QString m_filePath;
    quint64 m_received = 0;
    QHash<Identifier, quint64> m_receivedAt; // of what answers have brought
    QTimer m_saveTimer; // runs for saveInterval from each writing on
    bool m_isChanged = false; // since the last writing
    bool m_inserting = false;
};
