#pragma once

#include "http/Envelope.h"

#include <mutex>

namespace sandbox {

//! What the platform has to say to a client that starts: an advertisement, and a newer build.
//! Nothing of both until somebody asks for it.
class Notices
{
public:
    explicit Notices(const Addresses &hosts);

    //! {"ad": "none" | "still" | "animated", "update": "none" | "optional" | "forced"}; a member
    //! that is absent stays. Throws std::invalid_argument that says what is wrong with it.
    void set(const Json &description);
    Json description() const;
    void reset();

    //! The list of advertisements.
    Json ads() const;
    //! The newest build, for a client of this one.
    Json update(const std::string &currentBuild) const;

private:
    const Addresses m_addresses;
    mutable std::mutex m_mutex;
    std::string m_ad = "none";
    std::string m_update = "none";
};

} // namespace sandbox
