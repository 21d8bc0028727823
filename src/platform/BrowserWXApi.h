#pragma once

#include "platform/WXApi.h"

class UrlOpener;
class UrlSchemeHandler;

//! WeChat authorisation by the browser: opens the configured authorisation page, which sends the
//! user back by a URL of the application's own scheme. Nothing can be asked for before an
//! application is registered, nor without a page.
class BrowserWXApi : public WXApi
{
    Q_OBJECT

public:
    //! \a callbacks: made to bring the answers here when something is asked; null: the answers
    //! find their way without. \a authoriseUrl may have a query of its own.
    BrowserWXApi(UrlOpener *urlOpener, UrlSchemeHandler *callbacks, const QString &authoriseUrl);

    bool registerApp(const QString &appId, const QString &universalLink) override;
    bool sendAuthReq(const QString &scope, const QString &state) override;
    //! "<app id>://oauth?code=…&state=…", without code when the user refused. The same code is
    //! taken once, however often it comes.
    bool handleOpenURL(const QUrl &url) override;
    //! The same at the end of the registered link: "<universal link><app id>/oauth?…".
    bool handleOpenUniversalLink(const QUrl &link) override;

private:
    void takeAnswer(const QUrl &url);

    UrlOpener *m_urlOpener;
    UrlSchemeHandler *m_callbacks;
    QUrl m_authoriseUrl;
    QString m_appId;
    QUrl m_universalLink;
    QString m_lastCode;
};
