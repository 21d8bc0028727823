#pragma once

#include <memory>
#include <string>

using X509 = struct x509_st;
using EVP_PKEY = struct evp_pkey_st;

namespace sandbox {

//! The TLS host's certificate: made at start, signed by itself and by no authority that anyone
//! knows.
class Certificate
{
public:
    explicit Certificate(const std::string &address);
    ~Certificate();

    X509 *x509() const { return m_x509; }
    EVP_PKEY *key() const { return m_key; }
    //! For a client that shall trust it all the same.
    std::string pem() const;
    //! For another server at the same address.
    std::string keyPem() const;

private:
    EVP_PKEY *m_key = nullptr;
    X509 *m_x509 = nullptr;
};

} // namespace sandbox
