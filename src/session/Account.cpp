#include "session/Account.h"

#include "platform/Device.h"

namespace {

const QString studentBundle = QStringLiteral("cn.vant.student");
const QString patriarchBundle = QStringLiteral("cn.vant.patriarch");

}

Account::Account(const Device &device, const DeploymentConfiguration::Hosts &hosts)
    : loginModel(device.defaults)
    , studentIdentifier(device.keychain, studentBundle)
    , patriarchIdentifier(device.keychain, patriarchBundle)
    , requestManager(device.network, &loginModel, device.defaults, hosts)
    , requests(&requestManager, &studentIdentifier, &patriarchIdentifier)
    , ssoCookies(device.cookieStorage, device.defaults)
    , loginResult(&loginModel, device.defaults, &requests)
    , session(&loginModel, device.defaults, device.cookieStorage, &ssoCookies, &loginResult)
    , pushBinding(&loginModel, &requests, device.mainQueue, &session)
    , silentLogin(&loginModel, &requests, &session, &pushBinding)
{
}

void Account::prepareIdentifiers()
{
    studentIdentifier.prepare();
    patriarchIdentifier.prepare();
}
