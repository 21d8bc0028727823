#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sandbox {

//! Makes tokens that carry their own content. The key is fixed, so that a token outlives the
//! process that made it: what was stored by a client yesterday still signs in today.
class Signer
{
public:
    //! purpose keeps the tokens apart: one made to be a cookie is no login token.
    static std::string seal(std::string_view purpose, std::string_view content);
    //! The content, or nothing when the token is not one of ours.
    static std::optional<std::string> open(std::string_view purpose, std::string_view token);
    //! Keyed digest in hexadecimal.
    static std::string digest(std::string_view purpose, std::string_view content);
};

} // namespace sandbox
