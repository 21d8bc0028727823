#pragma once

#include "platform/services/WXApi.h"

#include <QDateTime>

#include <functional>
#include <optional>

class UrlOpener;
class UserDefaults;
class UrlSchemeHandler;

//! WeChat authorisation by the browser: opens the configured authorisation page, which sends the
//! user back by a URL of the application's own scheme. Nothing can be asked for before an
//! application is registered, nor without a page.
//!
//! Any page can open such a URL, so an answer counts only where something was asked: once, within
//! ten minutes, and with the number that travelled with the request and that nobody can guess. The
//! request is kept in the settings, for its answer may start the program.
class BrowserWXApi : public WXApi
{
    Q_OBJECT

public:
    using Clock = std::function<QDateTime()>;

    //! \a callbacks: made to bring the answers here when something is asked; null: the answers
    //! find their way without. \a authoriseUrl may have a query of its own.
    BrowserWXApi(UrlOpener *urlOpener, UrlSchemeHandler *callbacks, UserDefaults *defaults,
        const QString &authoriseUrl, Clock clock = &QDateTime::currentDateTimeUtc);

    bool registerApp(const QString &appId, const QString &universalLink) override;
    bool sendAuthReq(const QString &scope, const QString &state) override;
    void cancelPendingRequest() override;
    //! "<app id>://oauth?nonce=…&code=…&state=…", without code when the user refused. An answer
    //! that comes too late, or with another state than was asked for, counts as a refusal.
    bool handleOpenURL(const QUrl &url) override;
    //! The same at the end of the registered link: "<universal link><app id>/oauth?…".
    bool handleOpenUniversalLink(const QUrl &link) override;

private:
    //! What was asked and is not answered yet.
    struct Request
    {
        QString nonce;
        QString state;
        QDateTime asked;
    };

    bool takeAnswer(const QUrl &url);
    std::optional<Request> pendingRequest() const;
    void keep(const Request &request);
    bool isTimely(const Request &request) const;

    UrlOpener *m_urlOpener;
    UrlSchemeHandler *m_callbacks;
    UserDefaults *m_defaults;
    QUrl m_authoriseUrl;
    Clock m_clock;
    QString m_appId;
    QUrl m_universalLink;
};
