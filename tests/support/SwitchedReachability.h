#pragma once

#include "platform/desktop/NetworkReachabilityManager.h"

//! A network that is there or not, as the test says.
class SwitchedReachability : public NetworkReachabilityManager
{
public:
    Status networkReachabilityStatus() const override { return status; }

    Status status = Status::Unknown;
};
