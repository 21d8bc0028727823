#pragma once

#include <QString>

#include <optional>

class HTTPNetwork;
class RequestItem;
class UserDefaults;
struct HTTPError;

//! What a call needs from whoever sends it. Outlives its calls.
class RequestItemOwner
{
public:
    virtual ~RequestItemOwner() = default;

    virtual HTTPNetwork *network() const = 0;
    virtual UserDefaults *defaults() const = 0;
    virtual QString addressOf(
        const QString &action, const QString &start, const QString &organization) const = 0;
    //! The call's transfer has ended; delivers its completion and may delete it.
    virtual void handelRequestDidFinish(RequestItem *item, const std::optional<HTTPError> &error)
        = 0;
};
