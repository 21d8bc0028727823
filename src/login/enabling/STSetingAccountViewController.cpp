#include "login/enabling/STSetingAccountViewController.h"

#include "login/form/LoginTexts.h"
#include "model/StringFormat.h"
#include "net/catalogue/RequestInterface.h"
#include "session/Account.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortestPassword = 6;

}

STSetingAccountViewController::STSetingAccountViewController(
    const LoginEnvironment &environment, const VerifiedAccount &holder)
    : EnablingStepViewController(environment)
    , m_holder(holder)
{
    setTitle(u"设置账号"_s);
}

QString STSetingAccountViewController::greeting() const
{
    const QString address = userType() == VerifiedAccount::pupilType ? u"同学"_s : u"老师"_s;
    return StringFormat::format(u"您好，%@%@"_s, userName(), address);
}

void STSetingAccountViewController::write(QString &field, const QString &text)
{
    if (field == text)
        return;
    field = text;
    Q_EMIT fieldsChanged();
}

void STSetingAccountViewController::setAccount(const QString &account)
{
    write(m_account, account);
}

void STSetingAccountViewController::setPassword(const QString &password)
{
    write(m_password, password);
}

void STSetingAccountViewController::setConfirmPassword(const QString &confirmPassword)
{
    write(m_confirmPassword, confirmPassword);
}

bool STSetingAccountViewController::isSetingEnabled() const
{
    return !m_account.isEmpty() && !m_password.isEmpty() && !m_confirmPassword.isEmpty();
}

void STSetingAccountViewController::seting()
{
    const QString account = m_account.trimmed();
    const QString password = m_password.trimmed();
    const QString confirmPassword = m_confirmPassword.trimmed();
    if (account.isEmpty())
        return showError(LoginTexts::accountMissing);
    if (password.size() < shortestPassword)
        return showError(u"请输入不小于6位的密码"_s);
    if (confirmPassword.isEmpty())
        return showError(u"请输入您的确认密码"_s);
    if (password != confirmPassword)
        return showError(u"两次输入的密码不一致"_s);
    submit(
        [&](const ResponseCallback &response) {
            RequestInterface *requests = &environment().account->requests;
            if (environment().isPatriarch)
                requests->settingPatriarchAccountWithUserID(userId(), account, password, response);
            else
                requests->settingAccountWithUserID(userId(), account, password, response);
        },
        [this](const QJsonValue &) {
            environment().shell->toast()->showSuccess(u"设置成功"_s);
            if (auto *navigation = NavigationController::of(this))
                navigation->popToRoot();
        });
}
