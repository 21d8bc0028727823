#include "platform/storage/SealingKeys.h"

#include "platform/Logging.h"

#include <QPointer>

namespace {

constexpr int nameBytes = 8;

}

SealingKeys::SealingKeys(KeyChainStore *keychain, const QString &item)
    : m_keychain(keychain)
    , m_item(item)
{
}

QString SealingKeys::itemOf(const QByteArray &name) const
{
    return m_item + u'.' + QString::fromLatin1(name);
}

void SealingKeys::ask(const QByteArray &name)
{
    if (m_awaited.contains(name) || m_sealers.contains(name))
        return;
    m_awaited.insert(name);
    m_keychain->load(
        itemOf(name), [self = QPointer(this), name](const std::optional<QByteArray> &key) {
            if (self)
                self->answer(name, key);
        });
}

void SealingKeys::answer(const QByteArray &name, const std::optional<QByteArray> &key)
{
    m_awaited.remove(name);
    if (key && key->size() == Sealer::keySize) {
        m_sealers.insert(name, Sealer(*key));
        if (m_current.isNull())
            m_current = name;
    } else {
        qCWarning(lcPlatform) << "the keychain does not give out" << itemOf(name)
                              << "- what it seals cannot be read";
    }
    if (isSettled())
        Q_EMIT settled();
}

void SealingKeys::make()
{
    if (m_isMaking || !isSettled() || !m_current.isNull())
        return;
    m_isMaking = true;
    const QByteArray name = Sealer::randomBytes(nameBytes).toHex();
    const QByteArray key = Sealer::randomBytes(Sealer::keySize);
    m_keychain->save(itemOf(name), key, [self = QPointer(this), name, key](bool stored) {
        if (!self)
            return;
        self->m_isMaking = false;
        // What it sealed could never be opened again.
        if (!stored) {
            qCWarning(lcPlatform) << "no key can be kept, secrets stay in memory";
            return;
        }
        self->m_sealers.insert(name, Sealer(key));
        self->m_current = name;
        Q_EMIT self->settled();
    });
}

const Sealer *SealingKeys::sealer(const QByteArray &name) const
{
    const auto found = m_sealers.constFind(name);
    return found == m_sealers.cend() ? nullptr : &*found;
}
