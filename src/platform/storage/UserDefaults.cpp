#include "platform/storage/UserDefaults.h"

#include "platform/Logging.h"
#include "platform/storage/PrivateFile.h"
#include "platform/storage/SealingKeys.h"

#include <QDataStream>
#include <QIODevice>

namespace {

const QString keychainItem = QStringLiteral("cn.vant.student.settings");

//! A sealed value as it lies in the file: bytes, which nothing else in it is.
struct SealedValue
{
    static constexpr const char *form = "1";

    QByteArray keyName;
    QByteArray sealed;

    static std::optional<SealedValue> from(const QVariant &stored)
    {
        const QByteArrayList parts = stored.toByteArray().split(':');
        if (stored.metaType().id() != QMetaType::QByteArray || parts.size() != 3
            || parts[0] != form)
            return std::nullopt;
        return SealedValue {parts[1], QByteArray::fromBase64(parts[2])};
    }

    QVariant stored() const { return QByteArrayList {form, keyName, sealed.toBase64()}.join(':'); }

    //! What the sealing is bound to, so that values cannot change places.
    static QByteArray context(const QByteArray &keyName, const QString &key)
    {
        return QByteArrayList {form, keyName, key.toUtf8()}.join(':');
    }
};

// By this version, or by a later one in a form that this one cannot read.
bool isSealedSomehow(const QVariant &stored)
{
    return stored.metaType().id() == QMetaType::QByteArray;
}

QByteArray bytesOf(const QVariant &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << value;
    return bytes;
}

QVariant valueOf(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_0);
    QVariant value;
    stream >> value;
    return value;
}

QVariant opened(const SealedValue &value, const QString &key, const SealingKeys &keys)
{
    const Sealer *sealer = keys.sealer(value.keyName);
    if (!sealer)
        return {};
    if (const auto bytes = sealer->open(value.sealed, SealedValue::context(value.keyName, key)))
        return valueOf(*bytes);
    qCWarning(lcPlatform) << "the stored" << key << "has been changed and cannot be read";
    return {};
}

}

UserDefaults::UserDefaults(const QString &filePath)
    : m_settings(filePath)
{
    PrivateFile::prepareSettings(filePath);
}

UserDefaults::UserDefaults(
    const QString &filePath, KeyChainStore *keychain, const QStringList &secrets)
    : UserDefaults(filePath)
{
    m_secrets = secrets;
    m_keys = std::make_unique<SealingKeys>(keychain, keychainItem);
    QObject::connect(
        m_keys.get(), &SealingKeys::settled, m_keys.get(), [this] { keysAreSettled(); });
    readSecrets();
}

UserDefaults::~UserDefaults() = default;

void UserDefaults::readSecrets()
{
    for (const QString &key : std::as_const(m_secrets)) {
        const QVariant stored = m_settings.value(key);
        if (const auto value = SealedValue::from(stored))
            m_keys->ask(value->keyName);
        else if (stored.isValid() && isSecret(stored, key) && !isSealedSomehow(stored))
            m_held.insert(key, stored);
    }
    writeHeld();
}

QVariant UserDefaults::objectForKey(const QString &key) const
{
    if (const auto held = m_held.constFind(key); held != m_held.cend())
        return *held;
    QVariant stored = m_settings.value(key);
    if (!m_secrets.contains(key) || !isSealedSomehow(stored))
        return stored;
    const auto value = SealedValue::from(stored);
    return value ? opened(*value, key, *m_keys) : QVariant();
}

QString UserDefaults::stringForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.isValid() ? value.toString() : QString();
}

bool UserDefaults::boolForKey(const QString &key) const
{
    return m_settings.value(key).toBool();
}

bool UserDefaults::isAwaited(const QString &key) const
{
    if (!m_secrets.contains(key) || m_held.contains(key))
        return false;
    const auto value = SealedValue::from(m_settings.value(key));
    return value && m_keys->isAwaited(value->keyName);
}

void UserDefaults::whenReadable(std::function<void()> readable)
{
    if (!m_keys || m_keys->isSettled())
        readable();
    else
        m_waiting.push_back(std::move(readable));
}

void UserDefaults::keysAreSettled()
{
    if (!m_held.isEmpty()) {
        writeHeld();
        synchronize();
    }
    for (const auto &readable : std::exchange(m_waiting, {}))
        readable();
}

void UserDefaults::setObject(const QVariant &value, const QString &key)
{
    const bool isNil = !value.isValid()
        || (value.metaType().id() == QMetaType::QString && value.toString().isNull());
    if (isNil)
        removeObjectForKey(key);
    else
        store(value, key);
}

void UserDefaults::setBool(bool value, const QString &key)
{
    store(value, key);
}

void UserDefaults::removeObjectForKey(const QString &key)
{
    m_held.remove(key);
    m_settings.remove(key);
}

// What is there already leaves nothing to write: a write holds up the caller for as long as the
// disk takes.
void UserDefaults::store(const QVariant &value, const QString &key)
{
    const QVariant present = objectForKey(key);
    // From the file, numbers and truth come as texts.
    const bool isSameText = present.metaType().id() == QMetaType::QString
        && value.canConvert<QString>() && present.toString() == value.toString();
    if (present == value || isSameText)
        return;
    if (!isSecret(value, key)) {
        m_held.remove(key);
        m_settings.setValue(key, value);
        return;
    }
    m_held.insert(key, value);
    if (m_keys->current().isNull())
        m_settings.remove(key);
    writeHeld();
}

// An empty text tells nothing, and signing out must not wait for a key.
bool UserDefaults::isSecret(const QVariant &value, const QString &key) const
{
    return m_secrets.contains(key)
        && !(value.metaType().id() == QMetaType::QString && value.toString().isEmpty());
}

void UserDefaults::writeHeld()
{
    if (m_held.isEmpty())
        return;
    const QByteArray name = m_keys->current();
    if (name.isNull()) {
        m_keys->make();
        return;
    }
    const auto held = std::exchange(m_held, {});
    for (auto value = held.cbegin(); value != held.cend(); ++value) {
        const QByteArray sealed
            = m_keys->sealer(name)->seal(bytesOf(*value), SealedValue::context(name, value.key()));
        m_settings.setValue(value.key(), SealedValue {name, sealed}.stored());
    }
}

bool UserDefaults::synchronize()
{
    if (m_settings.synchronize())
        return true;
    qCWarning(lcPlatform) << "settings could not be written to" << m_settings.fileName();
    return false;
}
