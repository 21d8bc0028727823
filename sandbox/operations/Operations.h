#pragma once

#include "accounts/Platform.h"
#include "http/Envelope.h"

namespace sandbox {

//! One call of an operation, as far as the address has been understood.
struct Call
{
    const Request &request;
    std::string siteCode; //!< the organisation in the path, empty where the address has none

    std::string param(const std::string &name) const { return request.param(name); }
};

// LoginOperations.cpp: signing in
Envelope login4H5(const Call &call, Platform &platform);
Envelope login4AppWeixin(const Call &call, Platform &platform);
Envelope login(const Call &call, Platform &platform); //!< "login" and "login_tea"

// ActivationOperations.cpp: enabling an account
Envelope verifyAccount(const Call &call, Platform &platform);
Envelope verifyParentAccount(const Call &call, Platform &platform);
Envelope settingAccount(const Call &call, Platform &platform);

// SiteOperations.cpp: schools and regions
Envelope cndSite(const Call &call, Platform &platform);
Envelope siteSearch(const Call &call, Platform &platform);
Envelope regionTree(const Call &call, Platform &platform);
Envelope getSetting4App(const Call &call, Platform &platform);

// NoticeOperations.cpp: what the platform tells the application
Envelope agreement(const Call &call, Platform &platform);
Envelope appUpdateInfo(const Call &call, Platform &platform);
Envelope listAd4App(const Call &call, Platform &platform);
Envelope publicConfiguration(const Call &call, Platform &platform);

// BindingOperations.cpp: push
Envelope bindGeTui(const Call &call, Platform &platform);
Envelope unBindGeTui(const Call &call, Platform &platform);
Envelope bindIm(const Call &call, Platform &platform);

} // namespace sandbox
