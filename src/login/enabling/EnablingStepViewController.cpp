#include "login/enabling/EnablingStepViewController.h"

#include "login/form/LoginTexts.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

EnablingStepViewController::EnablingStepViewController(const LoginEnvironment &environment)
    : m_environment(environment)
    , m_request(environment.shell->progressHUD())
{
}

void EnablingStepViewController::showError(const QString &text)
{
    m_environment.shell->toast()->showError(text);
}

void EnablingStepViewController::submit(const Send &send, const Succeeded &succeeded)
{
    if (m_request.isRunning())
        return;
    Q_EMIT endEditing();
    m_request.begin(LoginTexts::signingIn);
    send([self = QPointer(this), succeeded](int status, const QJsonValue &data, const auto &error) {
        if (!self)
            return;
        self->m_request.end();
        if (status == ResponseStatus::success)
            succeeded(data);
        else
            self->showError(ResponseErrorInfo::textOf(error));
    });
}
