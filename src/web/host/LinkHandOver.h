#pragma once

#include <QList>
#include <QObject>

#include <functional>
#include <QUrl>

class MainQueue;
class UrlOpener;

//! Hands links of pages to the other programs of the device, one a second at most, so that a page
//! that follows them in a loop does not start as many programs. Shared by the views of all pages;
//! owned by the application.
class LinkHandOver : public QObject
{
    Q_OBJECT

public:
    using IsForeign = std::function<bool(const QUrl &page)>;

    //! \a isForeign: pages that the deployment wants to be opened in the system's browser.
    LinkHandOver(
        UrlOpener *urlOpener, MainQueue *mainQueue, const QString &customerServiceAccount,
        IsForeign isForeign = [](const QUrl &) { return false; });

    //! Of the chat that links with "mqq" open.
    QString customerServiceAccount() const { return m_customerServiceAccount; }

    //! Opens the first address that a program is registered for. Nothing within a second of the
    //! last one.
    void openFirst(const QList<QUrl> &addresses);
    //! Whether this address is not for our views. The browser has it then, unless it came too soon.
    bool openForeign(const QUrl &page);

private:
    UrlOpener *m_urlOpener;
    MainQueue *m_mainQueue;
    QString m_customerServiceAccount;
    IsForeign m_isForeign;
    bool m_resting = false;
};
