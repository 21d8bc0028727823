#include "login/enabling/EnablingStepViewController.h"

#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

EnablingStepViewController::EnablingStepViewController(const LoginEnvironment &environment)
    : m_environment(environment)
{
}

EnablingStepViewController::~EnablingStepViewController()
{
    // The answer finds nobody; the window must not wait for it.
    if (m_requestRunning)
        m_environment.shell->progressHUD()->hide();
}

void EnablingStepViewController::showError(const QString &text)
{
    m_environment.shell->toast()->showError(text);
}

void EnablingStepViewController::submit(const Send &send, const Succeeded &succeeded)
{
    if (m_requestRunning)
        return;
    m_requestRunning = true;
    Q_EMIT endEditing();
    m_environment.shell->progressHUD()->show(u"登录中"_s);
    send([self = QPointer(this), succeeded](int status, const QJsonValue &data, const auto &error) {
        if (!self)
            return;
        self->m_requestRunning = false;
        self->m_environment.shell->progressHUD()->hide();
        if (status == ResponseStatus::success)
            succeeded(data);
        else
            self->showError(ResponseErrorInfo::textOf(error));
    });
}
