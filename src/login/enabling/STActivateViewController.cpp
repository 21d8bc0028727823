#include "login/enabling/STActivateViewController.h"

#include "net/catalogue/RequestInterface.h"
#include "session/Account.h"

STActivateViewController::STActivateViewController(const LoginEnvironment &environment)
    : ActivateFormViewController(environment)
{
}

void STActivateViewController::verify(
    const QString &userNo, const QString &cartNo, const ResponseCallback &response)
{
    environment().account->requests.verifyAccountWithUserNo(userNo, cartNo, response);
}
