#include "files/Signature.h"

#include "accounts/Signer.h"

#include <array>
#include <ctime>

namespace sandbox {

std::string authorizationOf(const SignedRequest &request)
{
    const std::string resource
        = "/" + request.key + "?partNumber=" + request.partNumber + "&uploadId=" + request.uploadId;
    return "SANDBOX "
        + Signer::digest("storage",
            request.method + '\n' + request.contentType + '\n' + request.date + '\n' + resource);
}

std::string signatureDate()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts {};
    gmtime_r(&now, &parts);
    std::array<char, 40> text {};
    std::strftime(text.data(), text.size(), "%a, %d %b %Y %H:%M:%S GMT", &parts);
    return text.data();
}

} // namespace sandbox
