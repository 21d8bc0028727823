#pragma once

#include "platform/services/ShareLinkSheet.h"

class Shell;

//! Shows links as a code to scan, over everything. Owned by the application.
class LinkCodeSheet : public ShareLinkSheet
{
public:
    explicit LinkCodeSheet(Shell *shell);

    bool showLink(ShareSDK::Platform platform, const QString &title, const QString &link) override;

private:
    Shell *m_shell;
};
