#include "login/form/LoginViewModel.h"

#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "net/catalogue/RequestInterface.h"
#include "platform/time/MainQueue.h"
#include "session/Account.h"
#include "session/PushBinding.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto pushWait = 3s;
constexpr int ordinaryWeixinType = 1;
constexpr int patriarchWeixinType = 2;

//! Null, so that the parameter stays away, where there is no such entry.
QString entry(const std::optional<QJsonObject> &authParams, QStringView key)
{
    return authParams ? DictionaryMapper::text(authParams->value(key)) : QString();
}

CommandError commandError(const std::optional<ResponseErrorInfo> &error)
{
    return {error ? error->code : 0, ResponseErrorInfo::textOf(error)};
}

}

LoginViewModel::LoginViewModel(const LoginEnvironment &environment, QObject *parent)
    : QObject(parent)
    , m_environment(environment)
{
}

void LoginViewModel::setUserCode(const QString &userCode)
{
    m_userCode = userCode;
    Q_EMIT loginEnableSignal(isLoginEnabled());
}

void LoginViewModel::setUserPassword(const QString &userPassword)
{
    m_userPassword = userPassword;
    Q_EMIT loginEnableSignal(isLoginEnabled());
}

void LoginViewModel::setOrganization(const QString &organization)
{
    m_environment.account->requests.setOrganization(organization);
    Q_EMIT loginEnableSignal(isLoginEnabled());
}

bool LoginViewModel::isLoginEnabled() const
{
    return !m_userCode.isEmpty() && !m_userPassword.isEmpty()
        && !m_environment.account->requests.getCurrentOrganization().isEmpty();
}

void LoginViewModel::loginCommand(PatriarchLogin patriarch, CommandObserver observer)
{
    // Only the parents' login waits for the push client: deliberate.
    if (patriarch == PatriarchLogin::Yes)
        login(UserCheck::No, PushWait::Yes, std::move(observer));
    else
        login(UserCheck::Yes, PushWait::No, std::move(observer));
}

void LoginViewModel::bindWechatCommand(CommandObserver observer)
{
    login(UserCheck::Yes, PushWait::Yes, std::move(observer));
}

void LoginViewModel::login(UserCheck check, PushWait wait, CommandObserver observer)
{
    m_environment.account->session.own(
        m_environment.account->requests.accountBindWechatWithUserCode(m_userCode, m_userPassword,
            entry(authParams, u"union_id"), entry(authParams, u"open_id"),
            entry(authParams, u"nick"), entry(authParams, u"timestamp"), entry(authParams, u"sign"),
            authParams ? u"WEIXIN"_s : u""_s, authParams ? u"1"_s : u""_s,
            [self = QPointer(this), attempt = m_environment.account->session.attempt(), check, wait,
                observer = std::move(observer)](
                int status, const QJsonValue &data, const auto &error) {
                if (!self)
                    return;
                if (!self->m_environment.account->session.isCurrent(attempt))
                    observer.sendError({});
                else if (status == ResponseStatus::success)
                    self->handleLoginAnswer(attempt, data, check, wait, observer);
                else
                    self->refuse(attempt, commandError(error), observer);
            }));
}

void LoginViewModel::wechatLoginCommand(PatriarchLogin patriarch, CommandObserver observer)
{
    const int type = patriarch == PatriarchLogin::Yes ? patriarchWeixinType : ordinaryWeixinType;
    m_environment.account->session.own(m_environment.account->requests.loginForAppWeixinWithCode(
        authCode, type,
        [self = QPointer(this), attempt = m_environment.account->session.attempt(),
            observer = std::move(observer)](int status, const QJsonValue &data, const auto &error) {
            if (!self)
                return;
            if (!self->m_environment.account->session.isCurrent(attempt)) {
                observer.sendError({});
            } else if (status == ResponseStatus::success) {
                self->handleLoginAnswer(attempt, data, UserCheck::No, PushWait::Yes, observer);
            } else if (status == ResponseStatus::secondSuccess) {
                observer.sendNext(data);
                observer.sendCompleted();
            } else {
                self->refuse(attempt, commandError(error), observer);
            }
        }));
}

void LoginViewModel::refuse(
    const UserSession::Attempt &attempt, const CommandError &error, const CommandObserver &observer)
{
    m_environment.account->session.reject(attempt);
    observer.sendError(error);
}

void LoginViewModel::handleLoginAnswer(const UserSession::Attempt &attempt, const QJsonValue &data,
    UserCheck check, PushWait wait, const CommandObserver &observer)
{
    if (!data.isObject())
        return refuse(attempt, {0, ResponseErrorInfo::requestError()}, observer);
    if (refuses(check, data.toObject()))
        return refuse(attempt, {0, refusalText()}, observer);

    m_environment.account->session.begin(
        attempt, data.toObject(), ChosenRegion {school, provinces, city});
    if (m_environment.account->loginModel.isLoginOut())
        bindGeTui(wait);
    observer.sendCompleted();
}

void LoginViewModel::bindGeTui(PushWait wait)
{
    PushBinding *binding = &m_environment.account->pushBinding;
    if (wait == PushWait::Yes && m_environment.account->loginModel.c_id().isNull())
        binding->bindGeTuiAfter(pushWait);
    else
        binding->bindGeTui();
}

void LoginViewModel::requestSiteCommand(const QString &searchkey, CommandObserver observer)
{
    m_environment.account->requests.requsetSiteWithSearchkey(searchkey,
        [self = QPointer(this), observer = std::move(observer)](
            int status, const QJsonValue &data, const auto &error) {
            if (!self)
                return;
            if (status != ResponseStatus::success)
                return observer.sendError(commandError(error));
            const QJsonArray sites = data.toArray();
            self->sites = sites;
            observer.sendNext(sites);
            if (sites.isEmpty())
                observer.sendError({0, u"没有该学校"_s});
            else
                observer.sendCompleted();
        });
}

void LoginViewModel::logoCommand(const QString &site_id, CommandObserver observer)
{
    m_environment.account->requests.requestSchoolLogo(site_id, forward(std::move(observer)));
}

void LoginViewModel::requestAgreementUser(CommandObserver observer)
{
    m_environment.account->requests.requestAgreementUser(forward(std::move(observer)));
}

void LoginViewModel::requestAgreementPrivacy(CommandObserver observer)
{
    m_environment.account->requests.requestAgreementPrivacy(forward(std::move(observer)));
}

ResponseCallback LoginViewModel::forward(CommandObserver observer)
{
    return [self = QPointer(this), observer = std::move(observer)](
               int status, const QJsonValue &data, const auto &error) {
        if (!self)
            return;
        if (status != ResponseStatus::success)
            return observer.sendError(commandError(error));
        observer.sendNext(data);
        observer.sendCompleted();
    };
}
