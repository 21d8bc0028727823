#include "platform/storage/Sealer.h"

#include <QRandomGenerator>

#include <openssl/evp.h>

#include <algorithm>
#include <memory>

namespace {

constexpr int nonceSize = 12;
constexpr int tagSize = 16;

using Context = std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)>;

Context newContext()
{
    return {EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free};
}

uchar *bytes(QByteArray &array)
{
    return reinterpret_cast<uchar *>(array.data());
}

const uchar *bytes(const QByteArray &array)
{
    return reinterpret_cast<const uchar *>(array.constData());
}

}

QByteArray Sealer::randomBytes(qsizetype size)
{
    QByteArray random(size, Qt::Uninitialized);
    std::generate_n(
        random.begin(), size, [] { return char(QRandomGenerator::system()->bounded(256)); });
    return random;
}

Sealer::Sealer(const QByteArray &key)
    : m_key(key)
{
    Q_ASSERT(key.size() == keySize);
}

QByteArray Sealer::seal(const QByteArray &plain, const QByteArray &context) const
{
    const QByteArray nonce = randomBytes(nonceSize);
    QByteArray text(plain.size(), Qt::Uninitialized);
    QByteArray tag(tagSize, Qt::Uninitialized);
    const Context cipher = newContext();
    int length = 0;
    if (EVP_EncryptInit_ex(cipher.get(), EVP_aes_256_gcm(), nullptr, bytes(m_key), bytes(nonce))
            != 1
        || EVP_EncryptUpdate(cipher.get(), nullptr, &length, bytes(context), int(context.size()))
            != 1
        || EVP_EncryptUpdate(cipher.get(), bytes(text), &length, bytes(plain), int(plain.size()))
            != 1
        || EVP_EncryptFinal_ex(cipher.get(), bytes(tag), &length) != 1
        || EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_GCM_GET_TAG, tagSize, bytes(tag)) != 1)
        qFatal("the system's cryptography library cannot encrypt");
    return nonce + text + tag;
}

std::optional<QByteArray> Sealer::open(const QByteArray &sealed, const QByteArray &context) const
{
    if (sealed.size() < nonceSize + tagSize)
        return std::nullopt;
    const QByteArray nonce = sealed.first(nonceSize);
    const QByteArray text = sealed.sliced(nonceSize).chopped(tagSize);
    QByteArray tag = sealed.last(tagSize);
    QByteArray plain(text.size(), Qt::Uninitialized);
    const Context cipher = newContext();
    int length = 0;
    if (EVP_DecryptInit_ex(cipher.get(), EVP_aes_256_gcm(), nullptr, bytes(m_key), bytes(nonce))
            != 1
        || EVP_DecryptUpdate(cipher.get(), nullptr, &length, bytes(context), int(context.size()))
            != 1
        || EVP_DecryptUpdate(cipher.get(), bytes(plain), &length, bytes(text), int(text.size()))
            != 1
        || EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_GCM_SET_TAG, tagSize, bytes(tag)) != 1
        || EVP_DecryptFinal_ex(cipher.get(), bytes(tag), &length) != 1)
        return std::nullopt;
    return plain;
}
