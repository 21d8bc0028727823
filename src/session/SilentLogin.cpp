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

void SilentLogin::start(LoginResult::Refresh refresh, UserCheck check, Finished finished)
{
    const bool underWay = !m_waiting.empty();
    m_waiting.push_back({refresh, check, std::move(finished)});
    if (underWay)
        return;
    m_requests->setOrganization(m_loginModel->siteCode());
    m_requests->tokenLogin(m_loginModel->login_token(),
        [self = QPointer(this), attempt = ++m_attempt](
            int status, const QJsonValue &data, const auto &error) {
            if (self && attempt == self->m_attempt)
                self->handleAnswer(status, data, ResponseErrorInfo::textOf(error));
        });
}

void SilentLogin::cancel()
{
    ++m_attempt;
    fail({});
}

void SilentLogin::handleAnswer(int status, const QJsonValue &data, const QString &errorDescription)
{
    if (status != ResponseStatus::success)
        fail(errorDescription);
    else if (!data.isObject())
        fail(ResponseErrorInfo::requestError());
    else
        signIn(data.toObject());
}

void SilentLogin::fail(const QString &errorDescription)
{
    for (const Waiting &one : std::exchange(m_waiting, {}))
        one.finished(Outcome::Failed, errorDescription);
}

void SilentLogin::signIn(const QJsonObject &answer)
{
    const auto waiting = std::exchange(m_waiting, {});
    const auto user = DictionaryMapper::model<UserModel>(answer.value(u"user").toObject());
    const auto isRefused = [&user](const Waiting &one) {
        return one.check == UserCheck::Yes && user.user_type == UserModel::refusedType;
    };
    if (!std::all_of(waiting.cbegin(), waiting.cend(), isRefused)) {
        const bool refresh = std::any_of(waiting.cbegin(), waiting.cend(),
            [](const Waiting &one) { return one.refresh == LoginResult::Refresh::Yes; });
        m_cookies->handleCookie();
        m_result->handleLoginResult(
            answer, refresh ? LoginResult::Refresh::Yes : LoginResult::Refresh::No);
        if (!m_loginModel->c_id().isNull())
            m_binding->bindGeTui();
    }
    for (const Waiting &one : waiting)
        one.finished(isRefused(one) ? Outcome::Refused : Outcome::SignedIn, {});
}
