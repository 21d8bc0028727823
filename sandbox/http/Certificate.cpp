#include "http/Certificate.h"

#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <stdexcept>

namespace sandbox {

namespace {

    constexpr long lifetimeSeconds = 30L * 24 * 3600;

    void addExtension(X509 *certificate, int id, const std::string &value)
    {
        X509_EXTENSION *extension = X509V3_EXT_conf_nid(nullptr, nullptr, id, value.c_str());
        X509_add_ext(certificate, extension, -1);
        X509_EXTENSION_free(extension);
    }

    template <typename Write>
    std::string textOf(Write write)
    {
        BIO *memory = BIO_new(BIO_s_mem());
        write(memory);
        char *data = nullptr;
        const long size = BIO_get_mem_data(memory, &data);
        std::string text(data, size_t(size));
        BIO_free(memory);
        return text;
    }

} // namespace

Certificate::Certificate(const std::string &address)
    : m_key(EVP_EC_gen("P-256"))
    , m_x509(X509_new())
{
    // Clients refuse two different certificates of one issuer that bear the same number.
    BIGNUM *serial = BN_new();
    BN_rand(serial, 127, BN_RAND_TOP_ONE, BN_RAND_BOTTOM_ANY);
    BN_to_ASN1_INTEGER(serial, X509_get_serialNumber(m_x509));
    BN_free(serial);

    X509_set_version(m_x509, X509_VERSION_3);
    X509_gmtime_adj(X509_getm_notBefore(m_x509), -3600);
    X509_gmtime_adj(X509_getm_notAfter(m_x509), lifetimeSeconds);
    X509_set_pubkey(m_x509, m_key);
    X509_NAME *name = X509_get_subject_name(m_x509);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
        reinterpret_cast<const unsigned char *>("Sandbox school"), -1, -1, 0);
    X509_set_issuer_name(m_x509, name);
    addExtension(m_x509, NID_basic_constraints, "critical,CA:TRUE");
    addExtension(m_x509, NID_subject_alt_name, "IP:" + address);
    if (X509_sign(m_x509, m_key, EVP_sha256()) == 0)
        throw std::runtime_error("cannot make a certificate");
}

Certificate::~Certificate()
{
    X509_free(m_x509);
    EVP_PKEY_free(m_key);
}

std::string Certificate::pem() const
{
    return textOf([this](BIO *memory) { PEM_write_bio_X509(memory, m_x509); });
}

std::string Certificate::keyPem() const
{
    return textOf([this](BIO *memory) {
        PEM_write_bio_PrivateKey(memory, m_key, nullptr, nullptr, 0, nullptr, nullptr);
    });
}

} // namespace sandbox
