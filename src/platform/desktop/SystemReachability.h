#pragma once

#include "platform/desktop/NetworkReachabilityManager.h"

//! Reachability as the operating system reports it.
class SystemReachability : public NetworkReachabilityManager
{
public:
    //! \a hostIsLoopback: the platform's servers run on this very machine, which no network can
    //! take away.
    explicit SystemReachability(bool hostIsLoopback);

    Status networkReachabilityStatus() const override;

private:
    bool m_hostIsLoopback;
};
