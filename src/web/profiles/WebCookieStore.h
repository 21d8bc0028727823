#pragma once

#include <QNetworkCookie>
#include <QObject>
#include <QUrl>

class HTTPCookieStorage;
class QWebEngineCookieStore;

//! Keeps a web profile's cookies and the shell's cookie storage together.
//!
//! The storage is copied into the engine before a load, and what the shell deletes goes from the
//! engine too. What pages set or delete comes back into the storage where that is wanted; a cookie
//! for one load never does.
class WebCookieStore : public QObject
{
    Q_OBJECT

public:
    enum class Direction { IntoEngine, Both };

    WebCookieStore(HTTPCookieStorage *storage, QWebEngineCookieStore *engine, Direction direction);

    //! Copies every cookie of the storage into the engine.
    void copyStorage();
    //! Sees to it that the page's request carries the cookies of the header; those that the storage
    //! does not hold live until endLoad().
    void sendWithNextLoad(const QString &cookieHeader, const QUrl &page);
    //! The load has ended, however: its own cookies go.
    void endLoad();
    //! The user has left: until comeBack() nothing comes back into the storage. What the pages had
    //! under way is answered after they have gone, too.
    void leave();
    void comeBack();

private:
    void setInEngine(const QNetworkCookie &cookie);
    void cookieAdded(const QNetworkCookie &cookie);
    void cookieRemoved(const QNetworkCookie &cookie);
    bool isForOneLoad(const QNetworkCookie &cookie) const;

    HTTPCookieStorage *m_storage;
    QWebEngineCookieStore *m_engine;
    Direction m_direction;
    QList<QNetworkCookie> m_echoes; // set by us, not yet reported back
    QList<QNetworkCookie> m_oneLoad;
    QUrl m_oneLoadPage;
    bool m_hasLeft = false;
    bool m_mirroring = false; // what the engine reports is being carried over
};
