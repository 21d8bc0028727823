#pragma once

#include "platform/services/ShareSDK.h"

//! Shows the person a link, so that another device takes it.
class ShareLinkSheet
{
public:
    virtual ~ShareLinkSheet() = default;

    //! False when the link cannot be shown.
    virtual bool showLink(ShareSDK::Platform platform, const QString &title, const QString &link)
        = 0;
};
