#pragma once

#include <string>

namespace sandbox {

//! What a permission to store is for; changing any of it afterwards makes the permission void.
struct SignedRequest
{
    std::string method;
    std::string contentType;
    std::string date; //!< the header "x-oss-date"
    std::string key; //!< of the object
    std::string partNumber;
    std::string uploadId;
};

//! The header "Authorization" that goes with the request.
std::string authorizationOf(const SignedRequest &request);

//! Now, as the header "x-oss-date" wants it: "Tue, 01 Jul 2025 08:00:00 GMT".
std::string signatureDate();

} // namespace sandbox
