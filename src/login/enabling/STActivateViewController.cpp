#include "login/enabling/STActivateViewController.h"

#include "net/catalogue/RequestInterface.h"

STActivateViewController::STActivateViewController(const LoginEnvironment &environment)
    : ActivateFormViewController(environment)
{
}

void STActivateViewController::verify(
    const QString &userNo, const QString &cartNo, const ResponseCallback &response)
{
    environment().requests->verifyAccountWithUserNo(userNo, cartNo, response);
}
