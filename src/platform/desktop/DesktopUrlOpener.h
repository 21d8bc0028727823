#pragma once

#include "platform/desktop/UrlOpener.h"

//! Opens addresses with the programs that the desktop's scheme handlers name.
class DesktopUrlOpener : public UrlOpener
{
public:
    bool canOpenURL(const QUrl &url) const override;
    bool openURL(const QUrl &url) override;
};
