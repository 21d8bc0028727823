#include "login/enabling/ActivateFormViewController.h"

#include "login/enabling/STSetingAccountViewController.h"
#include "login/form/StringValidators.h"
#include "model/DictionaryMapper.h"
#include "session/Account.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

ActivateFormViewController::ActivateFormViewController(const LoginEnvironment &environment)
    : EnablingStepViewController(environment)
{
    setTitle(u"账号启用设置"_s);
}

void ActivateFormViewController::setHolder(const QString &holder)
{
    if (m_holder == holder)
        return;
    m_holder = holder;
    Q_EMIT fieldsChanged();
}

void ActivateFormViewController::setCartNo(const QString &cartNo)
{
    if (m_cartNo == cartNo)
        return;
    m_cartNo = cartNo;
    Q_EMIT fieldsChanged();
}

void ActivateFormViewController::activate()
{
    const QString holder = m_holder.trimmed();
    const QString cartNo = m_cartNo.trimmed();
    if (holder.isEmpty())
        return showError(missingHolder());
    if (cartNo.isEmpty())
        return showError(u"请输入您的证件号码"_s);
    if (!StringValidators::isIdentityCard(cartNo))
        return showError(u"请输入正确证件号码"_s);
    submit([&](const ResponseCallback &response) { verify(holder, cartNo, response); },
        [this](const QJsonValue &data) { verified(data); });
}

void ActivateFormViewController::verified(const QJsonValue &data)
{
    const auto account = DictionaryMapper::model<VerifiedAccount>(data.toObject());
    // Without it a name and a password would be chosen in vain.
    if (account.user_id.isEmpty())
        return showError(ResponseErrorInfo::requestError());
    if (auto *navigation = NavigationController::of(this))
        navigation->push(
            u"SetingAccountScreen"_s, new STSetingAccountViewController(environment(), account));
    environment().shell->toast()->showSuccess(u"激活成功"_s);
}
