#include "net/request/AssistTools.h"

#include "model/LoginModel.h"

QString AssistTools::localBaseUrl(
    const LoginModel &loginModel, const DeploymentConfiguration::Hosts &hosts)
{
    const QString localUrl = loginModel.isLocal() ? loginModel.localUrl() : QString();
    return localUrl.isEmpty() ? hosts.regions : localUrl;
}
