#pragma once

#include <QMap>
#include <QObject>
#include <QUrl>
#include <QVariantMap>

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

Q_SIGNALS:
    //! The user's session has ended before the question was answered.
    void unanswered(const QVariantMap &userInfo);

private:
    struct Question
    {
        int number; // of the alert
        QVariantMap userInfo;
    };

    void withdrawQuestions();

    WebView *m_webView;
    AlertView *m_alertView;
    LoginModel *m_loginModel;
    QUrl m_url;
    int m_lastQuestion = 0;
    QMap<int, Question> m_questions; // open, from the oldest to the newest
    QList<QUrl> m_activeArray; // named while in the foreground
};
