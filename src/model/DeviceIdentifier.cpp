#include "model/DeviceIdentifier.h"

#include <QUuid>

DeviceIdentifier::DeviceIdentifier(KeyChainStore *keychain, const QString &key)
    : m_keychain(keychain)
    , m_key(key)
{
}

void DeviceIdentifier::prepare()
{
    m_keychain->load(m_key, [this](const std::optional<QByteArray> &data) {
        if (data && !data->isEmpty()) {
            finish(QString::fromUtf8(*data));
            return;
        }
        const QString made = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
        m_keychain->save(m_key, made.toUtf8());
        finish(made);
    });
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
