#pragma once

#include "platform/services/DesktopShareSDK.h"
#include "services/PushRegistration.h"
#include "services/share/LinkCodeSheet.h"
#include "upload/SlicingUpload.h"
#include "web/host/LinkHandOver.h"
#include "web/host/PageHost.h"
#include "web/permissions/PagePermissions.h"
#include "web/portal/StudentPageServices.h"
#include "web/profiles/PageProfiles.h"
#include "web/questions/PageNotifications.h"
#include "web/secondary/SecondaryPages.h"

class Account;
class Shell;
struct DeploymentConfiguration;
struct Device;

//! What the portal's pages work with around their view, one of each for the process: where pages
//! live, what they reach of the device, the pages beside them, and what wakes them.
class Portal : public QObject
{
    Q_OBJECT

public:
    //! All must outlive the portal.
    Portal(const Device &device, Account *account, Shell *shell,
        const DeploymentConfiguration &configuration);

    LinkHandOver linkHandOver;
    PagePermissions pagePermissions;
    PageNotifications pageNotifications;
    PageHost pageHost;
    PageProfiles pageProfiles;
    SecondaryPages secondaryPages;
    LinkCodeSheet linkCodeSheet;
    DesktopShareSDK shareSDK;
    StudentPageServices services;
    SlicingUpload slicingUpload;
    PushRegistration pushRegistration;
};
