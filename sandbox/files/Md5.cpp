#include "files/Md5.h"

#include <openssl/evp.h>

#include <array>

namespace sandbox {

Md5::Md5()
    : m_context(EVP_MD_CTX_new(), EVP_MD_CTX_free)
{
    EVP_DigestInit_ex(m_context.get(), EVP_md5(), nullptr);
}

void Md5::add(std::string_view bytes)
{
    EVP_DigestUpdate(m_context.get(), bytes.data(), bytes.size());
}

std::string Md5::take()
{
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest {};
    unsigned int size = 0;
    EVP_DigestFinal_ex(m_context.get(), digest.data(), &size);
    EVP_DigestInit_ex(m_context.get(), EVP_md5(), nullptr);
    std::string hex;
    for (unsigned int i = 0; i < size; ++i) {
        constexpr std::string_view digits = "0123456789abcdef";
        hex += {digits[digest[i] >> 4], digits[digest[i] & 15]};
    }
    return hex;
}

} // namespace sandbox
