#pragma once

#include <QObject>
#include <QPointer>
#include <QUrl>

class PageHost;
class QWebEngineDownloadRequest;

//! One file that a page wants kept, from the question to the user until it is in the download
//! folder or gone. The engine fetches it, as little as it can before the user agrees, into a hidden
//! file beside the other downloads. Owned by PageHost; deletes itself when it has ended.
class PageDownload : public QObject
{
    Q_OBJECT

public:
    //! \a page: the one that asks.
    PageDownload(QWebEngineDownloadRequest *request, const QUrl &page, PageHost *host);

    //! The engine begins again what broke off, by another request.
    void goOn(QWebEngineDownloadRequest *request);
    //! Takes the question back, if it still stands, as if it had been refused.
    void withdraw();

Q_SIGNALS:
    //! By the user.
    void refused();

private:
    void ask(const QString &origin, qint64 size);
    void didAnswer(int button);
    void agree();
    void refuse();
    void stateChanged();
    void keep();
    void fail();
    void removeFetched();

    QPointer<QWebEngineDownloadRequest> m_request;
    PageHost *m_host;
    QString m_name;
    QString m_fetched; // the file under which it comes
    int m_question = 0; // the number of its alert
    bool m_agreed = false;
    bool m_ended = false;
};
