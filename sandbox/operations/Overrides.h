#pragma once

#include "http/Envelope.h"

#include <map>
#include <mutex>
#include <optional>

namespace sandbox {

//! Answers that someone has set by hand for an operation, until they are set anew or cleared.
class Overrides
{
public:
    //! {"start", "data"} or {"start", "envelope"}; "data" changes that member of the usual answer,
    //! "envelope" is the whole body. Throws std::invalid_argument that says what is wrong with it.
    void set(const Json &description);
    //! The whole answer that was set for the operation.
    std::optional<Json> envelopeFor(const std::string &start) const;
    std::optional<Json> dataFor(const std::string &start) const;
    void clear();

private:
    mutable std::mutex m_mutex;
    std::map<std::string, Json> m_envelopes;
    std::map<std::string, Json> m_data;
};

} // namespace sandbox
