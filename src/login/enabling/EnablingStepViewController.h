#pragma once

#include "login/form/LoginEnvironment.h"
#include "net/request/ResponseCallback.h"
#include "ui/feedback/ProgressWork.h"
#include "ui/navigation/ViewController.h"

//! What every step of enabling an account has: one request at a time, behind the progress
//! indicator, whose failure is told as an error and leaves the fields as they are. Pushed onto the
//! login screen's navigation controller, which owns it from then on.
class EnablingStepViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The base of the steps' controllers.")

public:
Q_SIGNALS:
    //! The keyboard shall go.
    void endEditing();

protected:
    using Send = std::function<void(ResponseCallback response)>;
    using Succeeded = std::function<void(const QJsonValue &data)>;

    explicit EnablingStepViewController(const LoginEnvironment &environment);

    const LoginEnvironment &environment() const { return m_environment; }
    void showError(const QString &text);
    //! Nothing while a request is under way.
    void submit(const Send &send, const Succeeded &succeeded);

private:
    LoginEnvironment m_environment;
    ProgressWork m_request;
};
