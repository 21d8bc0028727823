#include "session/SilentLogin.h"

#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "net/RequestInterface.h"
#include "session/PushBinding.h"
#include "session/SsoCookies.h"

#include <QPointer>

#include <algorithm>

SilentLogin::SilentLogin(LoginModel *loginModel, RequestInterface *requests, SsoCookies *cookies,
    LoginResult *result, PushBinding *binding)
    : m_loginModel(loginModel)
    , m_requests(requests)
    , m_cookies(cookies)
    , m_result(result)
    , m_binding(binding)
{
}

void SilentLogin::start(LoginResult::Refresh refresh, Finished finished)
{
    const bool underWay = !m_waiting.empty();
    m_waiting.push_back({refresh, std::move(finished)});
    if (underWay)
        return;
    m_requests->setOrganization(m_loginModel->siteCode());
    m_requests->tokenLogin(m_loginModel->login_token(),
        [self = QPointer(this)](int status, const QJsonValue &data, const auto &error) {
            if (self)
                self->handleAnswer(status, data, error ? error->errorDescription : QString());
        });
}

void SilentLogin::handleAnswer(
    int status, const QJsonValue &data, const QString &errorDescription)
{
    if (status != ResponseStatus::success) {
        finish(Outcome::Failed, errorDescription, {});
        return;
    }
    const QJsonObject answer = data.toObject();
    const auto user = DictionaryMapper::model<UserModel>(answer.value(u"user").toObject());
    if (user.user_type == UserModel::refusedType)
        finish(Outcome::Refused, {}, {});
    else
        finish(Outcome::SignedIn, {}, answer);
}

void SilentLogin::finish(
    Outcome outcome, const QString &errorDescription, const QJsonObject &data)
{
    const auto waiting = std::exchange(m_waiting, {});
    if (outcome == Outcome::SignedIn) {
        const bool refresh = std::any_of(waiting.cbegin(), waiting.cend(),
            [](const Waiting &one) { return one.refresh == LoginResult::Refresh::Yes; });
        m_cookies->handleCookie();
        m_result->handleLoginResult(
            data, refresh ? LoginResult::Refresh::Yes : LoginResult::Refresh::No);
        if (!m_loginModel->c_id().isNull())
            m_binding->bindGeTui();
    }
    for (const Waiting &one : waiting)
        one.finished(outcome, errorDescription);
}
