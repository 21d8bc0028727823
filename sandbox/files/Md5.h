#pragma once

#include <memory>
#include <string>
#include <string_view>

using EVP_MD_CTX = struct evp_md_ctx_st;

namespace sandbox {

//! Digest of bytes that come piece by piece.
class Md5
{
public:
    Md5();
    void add(std::string_view bytes);
    //! Of all that was added, 32 lower-case hexadecimal digits; begins anew.
    std::string take();

private:
    std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX *)> m_context;
};

} // namespace sandbox
