#pragma once

#include <QHash>
#include <QObject>

class PageDownload;
class PageHost;
class QUrl;
class QWebEngineDownloadRequest;

//! The downloads of the pages of one view: a few at once, each asked about. Who refuses one is not
//! asked again for a while. What the user has agreed to goes on without the view. Owned by WebView.
class PageDownloads : public QObject
{
    Q_OBJECT

public:
    explicit PageDownloads(PageHost *host);

    //! \a page: the one that asks.
    void start(QWebEngineDownloadRequest *request, const QUrl &page);
    //! Takes the questions back.
    void withdraw();

Q_SIGNALS:
    void withdrawn();

private:
    void rest();

    PageHost *m_host;
    // By the engine's number: those that wait for an answer, and those that run.
    QHash<quint32, PageDownload *> m_underWay;
    bool m_resting = false;
};
