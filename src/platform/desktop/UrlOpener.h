#pragma once

class QUrl;

//! Hands addresses to the other programs of the device.
class UrlOpener
{
public:
    virtual ~UrlOpener() = default;

    //! Whether a program is registered for the address's scheme.
    virtual bool canOpenURL(const QUrl &url) const = 0;
    //! Hands the address over; false when no program took it.
    virtual bool openURL(const QUrl &url) = 0;
};
