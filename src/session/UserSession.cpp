#include "session/UserSession.h"

#include "model/LoginModel.h"
#include "net/request/RequestItem.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "session/Logging.h"
#include "session/SsoCookies.h"

namespace {

const QString lastUserKey = QStringLiteral("LastUser");
const QString nobody = QStringLiteral("nobody");
const QString receivedCookieKey = QStringLiteral("MiPushUsingCookie");

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

bool UserSession::begin(
    const Attempt &attempt, const QJsonObject &answer, LoginResult::Refresh refresh)
{
    const auto start = prepare(attempt, answer);
    if (start == Start::Outdated)
        return false;
    // Somebody else cannot go on where the former user was.
    m_result->handleLoginResult(
        answer, start == Start::OtherUser ? LoginResult::Refresh::Yes : refresh);
    if (!isCurrent(attempt))
        Q_EMIT begun();
    return true;
}

bool UserSession::begin(
    const Attempt &attempt, const QJsonObject &answer, const ChosenRegion &region)
{
    if (prepare(attempt, answer) == Start::Outdated)
        return false;
    m_result->handleLoginResult(answer, region);
    if (!isCurrent(attempt))
        Q_EMIT begun();
    return true;
}

UserSession::Start UserSession::prepare(const Attempt &attempt, const QJsonObject &answer)
{
    if (!isCurrent(attempt)) {
        qCInfo(lcSession) << "a login was answered too late and is of no effect";
        return Start::Outdated;
    }
    const QString user = m_result->userOf(answer);
    const QString lastUser = m_defaults->stringForKey(lastUserKey);
    const bool isStoredLogins = lastUser.isNull() && m_active;
    const bool isOther
        = !user.isNull() && lastUser != nobody && user != lastUser && !isStoredLogins;
    if (isOther) {
        if (m_active)
            end([] {});
        forgetFormerUser(attempt.cookieMark);
    }
    if (!user.isNull()) {
        m_defaults->setObject(user, lastUserKey);
        m_defaults->synchronize();
    }
    if (!std::exchange(m_active, true))
        startNumber();
    m_cookies->handleCookie();
    return isOther ? Start::OtherUser : Start::SameUser;
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
    m_defaults->removeObjectForKey(receivedCookieKey);
    m_defaults->synchronize();
    write();
    if (wasActive)
        Q_EMIT ended();
}
