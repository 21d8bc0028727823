#include "platform/push/PushStore.h"

#include <QStringList>
#include <QUuid>

namespace {

constexpr int mostRemembered = 200;
constexpr int longestId = 128;
const QString clientIdKey = QStringLiteral("clientId");
const QString messagesKey = QStringLiteral("messages");

}

PushStore::PushStore(const QString &filePath)
    : m_file(filePath)
{
}

QString PushStore::clientId()
{
    QString id = m_file.stringForKey(clientIdKey);
    if (id.isEmpty()) {
        id = QUuid::createUuid().toString(QUuid::Id128);
        m_file.setObject(id, clientIdKey);
        m_file.synchronize();
    }
    return id;
}

bool PushStore::remember(const QString &messageId)
{
    if (messageId.isEmpty())
        return true;
    const QString id = messageId.left(longestId);
    QStringList known = m_file.objectForKey(messagesKey).toStringList();
    if (known.contains(id))
        return false;
    known << id;
    if (known.size() > mostRemembered)
        known.removeFirst();
    m_file.setObject(known, messagesKey);
    m_file.synchronize();
    return true;
}
