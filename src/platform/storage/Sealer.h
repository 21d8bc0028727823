#pragma once

#include <QByteArray>

#include <optional>

//! Seals bytes with one key, so that who has not got it can neither read them nor change them
//! unnoticed: AES-256 in Galois/counter mode, with a new random nonce each time.
class Sealer
{
public:
    static constexpr qsizetype keySize = 32;
    //! Bytes that nobody can foretell.
    static QByteArray randomBytes(qsizetype size);

    //! \a key: keySize bytes.
    explicit Sealer(const QByteArray &key);

    //! Nonce, cipher text and tag. \a context says what the bytes are, and is no secret: they open
    //! under the same one only.
    QByteArray seal(const QByteArray &plain, const QByteArray &context) const;
    //! Nothing when the bytes were not sealed with this key for this context, or were changed.
    std::optional<QByteArray> open(const QByteArray &sealed, const QByteArray &context) const;

private:
    QByteArray m_key;
};
