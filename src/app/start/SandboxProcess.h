#pragma once

#include "model/DeploymentConfiguration.h"

#include <QProcess>

#include <variant>

//! A school platform beside the client: a child process that ends with it, however the client ends.
class SandboxProcess
{
public:
    ~SandboxProcess();

    //! Starts the platform and asks it for its deployment's configuration. Waits until it answers,
    //! ten seconds at the most; otherwise one line that says what went wrong.
    std::variant<DeploymentConfiguration, QString> start();

private:
    QProcess m_process;
};
