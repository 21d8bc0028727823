#pragma once

#include "platform/storage/KeyChainStore.h"
#include "platform/storage/Sealer.h"

#include <QHash>
#include <QObject>
#include <QSet>

//! The keys that settings are sealed with: random, 256 bits, each an item of the keychain. Owned by
//! the settings.
//!
//! What is sealed names its key, and the item is named after it. A profile has one key as a rule. A
//! further one is made only when something is to be sealed and none of those that were asked for
//! could be read, for the keyring has lost it, is locked, or fails; the item of the first stays as
//! it is, so that what it seals opens again as soon as the keyring gives it out. While the keyring
//! owes an answer none is made.
class SealingKeys : public QObject
{
    Q_OBJECT

public:
    //! \a item: how the keychain's items are called; the key's own name is added.
    SealingKeys(KeyChainStore *keychain, const QString &item);

    //! Asks the keychain for a key that has sealed something. settled() comes when the last one
    //! that was asked for has been answered, never from inside this call.
    void ask(const QByteArray &name);
    //! Makes a key and stores it, unless there is one, one is being made, or the keychain owes an
    //! answer. settled() comes when it is stored, and not at all when it cannot be.
    void make();

    bool isAwaited(const QByteArray &name) const { return m_awaited.contains(name); }
    bool isSettled() const { return m_awaited.isEmpty(); }
    //! The key of that name, null when it is not known.
    const Sealer *sealer(const QByteArray &name) const;
    //! The name of a key to seal with, null when none is known.
    QByteArray current() const { return m_current; }

Q_SIGNALS:
    void settled();

private:
    void answer(const QByteArray &name, const std::optional<QByteArray> &key);
    QString itemOf(const QByteArray &name) const;

    KeyChainStore *m_keychain;
    QString m_item;
    QSet<QByteArray> m_awaited;
    QHash<QByteArray, Sealer> m_sealers;
    QByteArray m_current;
    bool m_isMaking = false;
};
