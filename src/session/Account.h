#pragma once

#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "net/catalogue/RequestInterface.h"
#include "net/request/BaseRequestManager.h"
#include "session/LoginResult.h"
#include "session/PushBinding.h"
#include "session/SilentLogin.h"
#include "session/SsoCookies.h"
#include "session/UserSession.h"

struct Device;

//! Who is signed in and how the platform is asked, one of each for the process: the stored login,
//! the calls, and the session with what belongs to it.
class Account
{
public:
    Account(const Device &device, const DeploymentConfiguration::Hosts &hosts);
    Account(const Account &) = delete;
    Account &operator=(const Account &) = delete;

    //! Reads this device's identifiers, or makes them.
    void prepareIdentifiers();

    LoginModel loginModel;
    DeviceIdentifier studentIdentifier;
    DeviceIdentifier patriarchIdentifier;
    BaseRequestManager requestManager;
    RequestInterface requests;
    SsoCookies ssoCookies;
    LoginResult loginResult;
    UserSession session;
    PushBinding pushBinding;
    SilentLogin silentLogin;
};
