#include "login/enabling/PActivateViewController.h"

#include "net/catalogue/RequestInterface.h"
#include "session/Account.h"

PActivateViewController::PActivateViewController(const LoginEnvironment &environment)
    : ActivateFormViewController(environment)
{
}

void PActivateViewController::verify(
    const QString &userName, const QString &cartNo, const ResponseCallback &response)
{
    environment().account->requests.verifyPatriarchAccountWithUserName(userName, cartNo, response);
}
