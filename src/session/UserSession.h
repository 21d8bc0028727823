#pragma once

#include "session/LoginResult.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>

class HTTPCookieStorage;
class RequestItem;
class SsoCookies;

//! The time from a stored login to its end. Here alone a user's session begins and ends, whatever
//! the way. One for the process, owned by the application.
//!
//! What is begun for a user ends with ending(), is broken off where it is own()ed, or notes
//! number() and is dropped where it comes back under another: so nobody has to know what is under
//! way.
class UserSession : public QObject
{
    Q_OBJECT

public:
    //! A login on its way: the session it was asked for in, and the cookies that were there before.
    struct Attempt
    {
        int number = 0;
        quint64 cookieMark = 0;
    };

    UserSession(LoginModel *loginModel, UserDefaults *defaults, HTTPCookieStorage *storage,
        SsoCookies *cookies, LoginResult *result);

    bool isActive() const { return m_active; }
    //! Of this session, or of the time between two.
    int number() const { return m_number; }

    //! At start, before all else: what lies here of nobody who is known or signed in goes.
    void launch();
    //! At start: the stored login is somebody's, whose session goes on.
    void resume();

    //! To be noted when a login is sent, and handed over with its answer.
    Attempt attempt() const;
    bool isCurrent(const Attempt &attempt) const { return attempt.number == m_number; }
    //! A call for the user, or to sign somebody in: it is cancelled when a session begins or ends,
    //! lest its answer bring cookies that are not the session's.
    void own(RequestItem *call);
    //! A login has succeeded: its cookies are saved and its answer is stored. Nothing where a
    //! session has begun or ended since it was sent. The same user's session goes on; what another
    //! user has left is gone before anything is stored.
    void begin(const Attempt &attempt, const QJsonObject &answer, LoginResult::Refresh refresh);
    void begin(const Attempt &attempt, const QJsonObject &answer, const ChosenRegion &region);

    //! A login has not succeeded: the cookies that its answer may have brought go. Nothing where a
    //! session has begun or ended since it was sent.
    void reject(const Attempt &attempt);

    //! The user leaves: session cookies and their saved copies go, account and password are empty;
    //! the token stays.
    void logout();
    //! The stored login is not accepted any more: the record says so, cookies and account stay.
    void expire();

Q_SIGNALS:
    //! Somebody has signed in, and all is stored. Not for a login that a session goes on with.
    void begun();
    //! What runs for the user ends now; cookies and record still stand.
    void ending();
    void ended();
    //! Another user than the last one signs in, and nothing of it is stored yet: what pages,
    //! pictures and exports have left on this device goes now.
    void userChanging();

private:
    enum class User { Same, Other };

    void begin(const Attempt &attempt, const QJsonObject &answer,
        const std::function<void(User user)> &store);
    User makeRoomFor(const Attempt &attempt, const QJsonObject &answer);
    void end(const std::function<void()> &write);
    void forgetFormerUser(quint64 cookieMark);
    void startNumber();

    LoginModel *m_loginModel;
    UserDefaults *m_defaults;
    HTTPCookieStorage *m_storage;
    SsoCookies *m_cookies;
    LoginResult *m_result;
    bool m_active = false;
    int m_number = 0;
    QList<QPointer<RequestItem>> m_calls;
};
