#pragma once

#include <QObject>
#include <QUrl>

class AlertView;
class LoginModel;
class UserSession;
class WebView;

//! Opens the pages that notifications name. Owned by the home container.
class PushPages : public QObject
{
    Q_OBJECT

public:
    PushPages(WebView *webView, AlertView *alertView, LoginModel *loginModel, UserSession *session);

    //! The user tapped the notification: its page is loaded at once.
    void backloadNewWeb(const QVariant &userInfo);
    //! The notification came while the program was in the foreground: the user is asked first.
    void loadNewWeb(const QVariant &userInfo);

    //! The last page that a notification named.
    QUrl url() const { return m_url; }

private:
    WebView *m_webView;
    AlertView *m_alertView;
    LoginModel *m_loginModel;
    UserSession *m_session;
    QUrl m_url;
    QList<QUrl> m_activeArray; // named while in the foreground
};
