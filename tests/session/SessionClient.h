#pragma once

#include "platform/Device.h"
#include "platform/time/NotificationCenter.h"
#include "session/Account.h"
#include "support/ManualMainQueue.h"
#include "support/NotedUrlOpener.h"
#include "support/SwitchedReachability.h"
#include "support/TestProfile.h"

//! Everything up to the session, in a profile of its own: the device is the test's, its clock
//! stands still until it is advanced.
class SessionClient : public TestProfile
{
public:
    explicit SessionClient(const DeploymentConfiguration::Hosts &hosts);

    //! Logs in with a password at the school, and stores school and token as a restart would find
    //! them. False when the platform refuses, or gives no token.
    bool rememberLogin(
        const QString &userCode, const QString &siteCode = QStringLiteral("school01"));
    //! The names of the saved session cookies, sorted.
    QStringList savedCookieNames() const;
    //! Whether a call to the platform is on its way.
    bool isWaiting() const { return !account.requestManager.connectItems().empty(); }

    ManualMainQueue mainQueue;
    NotificationCenter notifications;
    SwitchedReachability reachability;
    NotedUrlOpener urlOpener;
    Device device; //!< the parts above; no others
    Account account;
};
