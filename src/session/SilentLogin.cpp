#include "session/SilentLogin.h"

#include "model/LoginModel.h"
#include "net/catalogue/RequestInterface.h"
#include "session/PushBinding.h"

#include <QJsonObject>
#include <QPointer>

#include <algorithm>

SilentLogin::SilentLogin(
    LoginModel *loginModel, RequestInterface *requests, UserSession *session, PushBinding *binding)
    : m_loginModel(loginModel)
    , m_requests(requests)
    , m_session(session)
    , m_binding(binding)
{
    connect(session, &UserSession::ended, this, [this] { finish(Outcome::Cancelled); });
}

void SilentLogin::start(LoginResult::Refresh refresh, UserCheck check, Finished finished)
{
    const bool underWay = !m_waiting.empty();
    m_waiting.push_back({refresh, check, std::move(finished)});
    if (underWay)
        return;
    m_requests->setOrganization(m_loginModel->siteCode());
    m_attempt = m_session->attempt();
    m_session->own(m_requests->tokenLogin(m_loginModel->login_token(),
        [self = QPointer(this), attempt = m_attempt](
            int status, const QJsonValue &data, const auto &error) {
            if (self && self->m_session->isCurrent(attempt))
                self->handleAnswer(status, data, ResponseErrorInfo::textOf(error));
        }));
}

void SilentLogin::handleAnswer(int status, const QJsonValue &data, const QString &errorDescription)
{
    if (status == ResponseStatus::success && data.isObject())
        return signIn(data.toObject());
    m_session->reject(m_attempt);
    finish(Outcome::Failed,
        status == ResponseStatus::success ? ResponseErrorInfo::requestError() : errorDescription);
}

void SilentLogin::finish(Outcome outcome, const QString &errorDescription)
{
    for (const Waiting &one : std::exchange(m_waiting, {}))
        one.finished(outcome, errorDescription);
}

void SilentLogin::signIn(const QJsonObject &answer)
{
    const auto waiting = std::exchange(m_waiting, {});
    const auto isRefused = [&answer](const Waiting &one) { return refuses(one.check, answer); };
    if (std::all_of(waiting.cbegin(), waiting.cend(), isRefused)) {
        m_session->reject(m_attempt);
    } else {
        const bool refresh = std::any_of(waiting.cbegin(), waiting.cend(),
            [](const Waiting &one) { return one.refresh == LoginResult::Refresh::Yes; });
        m_session->begin(
            m_attempt, answer, refresh ? LoginResult::Refresh::Yes : LoginResult::Refresh::No);
        if (!m_loginModel->c_id().isNull())
            m_binding->bindGeTui();
    }
    for (const Waiting &one : waiting)
        one.finished(isRefused(one) ? Outcome::Refused : Outcome::SignedIn, {});
}
