#pragma once

#include "platform/desktop/NetworkReachabilityManager.h"

//! A network that is there or not, as the test says.
class SwitchedReachability : public NetworkReachabilityManager
{
public:
    Status networkReachabilityStatus() const override { return status; }

    void become(Status now)
    {
        status = now;
        Q_EMIT statusChanged();
    }

    Status status = Status::Unknown;
};
