#include "accounts/Signer.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>

namespace sandbox {

namespace {

    constexpr std::string_view key = "vant-sandbox: everything here is make-believe";
    constexpr std::string_view hexDigits = "0123456789abcdef";
    constexpr size_t digestBytes = 16;

    std::string toHex(std::string_view bytes)
    {
        std::string hex;
        for (const unsigned char byte : bytes) {
            hex += hexDigits[byte >> 4];
            hex += hexDigits[byte & 15];
        }
        return hex;
    }

    std::optional<std::string> fromHex(std::string_view hex)
    {
        if (hex.size() % 2 != 0)
            return {};
        std::string bytes;
        for (size_t i = 0; i < hex.size(); i += 2) {
            const size_t high = hexDigits.find(hex[i]);
            const size_t low = hexDigits.find(hex[i + 1]);
            if (high == hexDigits.npos || low == hexDigits.npos)
                return {};
            bytes += char(high << 4 | low);
        }
        return bytes;
    }

} // namespace

std::string Signer::digest(std::string_view purpose, std::string_view content)
{
    const std::string message = std::string(purpose) + '\n' + std::string(content);
    std::array<unsigned char, EVP_MAX_MD_SIZE> result {};
    HMAC(EVP_sha256(), key.data(), int(key.size()),
        reinterpret_cast<const unsigned char *>(message.data()), message.size(), result.data(),
        nullptr);
    return toHex({reinterpret_cast<const char *>(result.data()), digestBytes});
}

std::string Signer::seal(std::string_view purpose, std::string_view content)
{
    return toHex(content) + digest(purpose, content);
}

std::optional<std::string> Signer::open(std::string_view purpose, std::string_view token)
{
    if (token.size() < 2 * digestBytes)
        return {};
    const auto content = fromHex(token.substr(0, token.size() - 2 * digestBytes));
    if (!content)
        return {};
    const std::string expected = digest(purpose, *content);
    const std::string_view given = token.substr(token.size() - expected.size());
    return CRYPTO_memcmp(expected.data(), given.data(), expected.size()) == 0 ? content
                                                                              : std::nullopt;
}

} // namespace sandbox
