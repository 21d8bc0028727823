#include "session/UserSession.h"

#include "model/LoginModel.h"
#include "model/SecretSettings.h"
#include "net/request/RequestItem.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "session/Logging.h"
#include "session/SsoCookies.h"

namespace {

const QString lastUserKey = QStringLiteral("LastUser");
const QString nobody = QStringLiteral("nobody");

}

UserSession::UserSession(LoginModel *loginModel, UserDefaults *defaults, HTTPCookieStorage *storage,
    SsoCookies *cookies, LoginResult *result)
    : m_loginModel(loginModel)
    , m_defaults(defaults)
    , m_storage(storage)
    , m_cookies(cookies)
    , m_result(result)
{
}

void UserSession::launch()
{
    // An earlier version has not noted whose its stored login is; the answer to it will say so.
    if (m_defaults->objectForKey(lastUserKey).isValid() || m_loginModel->isLogin())
        return;
    forgetFormerUser(m_storage->mark());
    m_defaults->setObject(nobody, lastUserKey);
    m_defaults->synchronize();
}

// The mark of the last user goes last: a kill before it leaves the work to the next login.
void UserSession::forgetFormerUser(quint64 cookieMark)
{
    Q_EMIT userChanging();
    m_storage->removeReceivedBefore(cookieMark);
}

void UserSession::resume()
{
    m_active = true;
    startNumber();
}

UserSession::Attempt UserSession::attempt() const
{
    return {m_number, m_storage->mark()};
}

void UserSession::own(RequestItem *call)
{
    m_calls.removeIf([](const auto &one) { return one.isNull(); });
    m_calls << call;
}

void UserSession::startNumber()
{
    ++m_number;
    for (const auto &call : std::exchange(m_calls, {})) {
        if (call)
            call->cancel();
    }
}

void UserSession::begin(
    const Attempt &attempt, const QJsonObject &answer, LoginResult::Refresh refresh)
{
    begin(attempt, answer, [&](User user) {
        // Somebody else cannot go on where the former user was.
        m_result->handleLoginResult(
            answer, user == User::Other ? LoginResult::Refresh::Yes : refresh);
    });
}

void UserSession::begin(
    const Attempt &attempt, const QJsonObject &answer, const ChosenRegion &region)
{
    begin(attempt, answer, [&](User) { m_result->handleLoginResult(answer, region); });
}

void UserSession::begin(
    const Attempt &attempt, const QJsonObject &answer, const std::function<void(User user)> &store)
{
    if (!isCurrent(attempt)) {
        qCInfo(lcSession) << "a login was answered too late and is of no effect";
        return;
    }
    const User user = makeRoomFor(attempt, answer);
    const bool isNew = !std::exchange(m_active, true);
    if (isNew)
        startNumber();
    m_cookies->handleCookie();
    store(user);
    if (isNew)
        Q_EMIT begun();
}

UserSession::User UserSession::makeRoomFor(const Attempt &attempt, const QJsonObject &answer)
{
    const QString user = m_result->userOf(answer);
    if (user.isNull())
        return User::Same;
    const QString lastUser = m_defaults->stringForKey(lastUserKey);
    const bool isStoredLogins = lastUser.isNull() && m_active;
    const bool isOther = lastUser != nobody && user != lastUser && !isStoredLogins;
    if (isOther) {
        if (m_active)
            end([] {});
        forgetFormerUser(attempt.cookieMark);
    }
    m_defaults->setObject(user, lastUserKey);
    m_defaults->synchronize();
    return isOther ? User::Other : User::Same;
}

void UserSession::reject(const Attempt &attempt)
{
    if (isCurrent(attempt))
        m_storage->removeReceivedSince(attempt.cookieMark);
}

void UserSession::logout()
{
    end([this] {
        m_cookies->clearCookies();
        m_loginModel->logout();
    });
}

void UserSession::expire()
{
    end([this] { m_loginModel->setIsLogin(false); });
}

// The record is written even where no session is known: what it says must hold.
void UserSession::end(const std::function<void()> &write)
{
    const bool wasActive = std::exchange(m_active, false);
    if (wasActive) {
        startNumber();
        Q_EMIT ending();
    }
    m_defaults->removeObjectForKey(SecretSettings::receivedCookie);
    m_defaults->synchronize();
    write();
    if (wasActive)
        Q_EMIT ended();
}
