#include "model/DeviceIdentifier.h"

#include "model/Logging.h"
#include "model/StringFormat.h"

#include <QStringDecoder>
#include <QUuid>

using namespace Qt::StringLiterals;

DeviceIdentifier::DeviceIdentifier(KeyChainStore *keychain, const QString &key)
    : m_keychain(keychain)
    , m_key(key)
{
}

void DeviceIdentifier::prepare()
{
    m_keychain->load(m_key, [this](const std::optional<QByteArray> &data) {
        const QString stored = unarchived(data.value_or(QByteArray()));
        if (!stored.isEmpty()) {
            finish(stored);
            return;
        }
        const QString made = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
        m_keychain->save(m_key, made.toUtf8());
        finish(made);
    });
}

QString DeviceIdentifier::unarchived(const QByteArray &data) const
{
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(data);
    if (!decode.hasError())
        return text;
    qCWarning(lcModel).noquote() << StringFormat::format(
        u"Unarchive of %@ failed: %@"_s, m_key, u"no text"_s);
    return {};
}

void DeviceIdentifier::whenReady(Ready ready)
{
    if (m_uuid.isNull())
        m_waiting.push_back(std::move(ready));
    else
        ready(m_uuid);
}

void DeviceIdentifier::finish(const QString &uuid)
{
    m_uuid = uuid;
    for (const Ready &ready : std::exchange(m_waiting, {}))
        ready(uuid);
}
