#include "web/permissions/PagePermissions.h"

#include "platform/storage/UserDefaults.h"
#include "platform/transport/ServerAddress.h"
#include "web/bridge/BridgeTrust.h"

#include <QJsonDocument>
#include <QMetaEnum>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QString settingsKey = QStringLiteral("PagePermissions");

QString nameOf(PagePermissions::Matter matter)
{
    const auto names = QMetaEnum::fromType<PagePermissions::Matter>();
    return QString::fromLatin1(names.valueToKey(int(matter)));
}

}

PagePermissions::PagePermissions(UserDefaults *defaults, std::function<bool()> isSignedIn)
    : m_defaults(defaults)
    , m_isSignedIn(std::move(isSignedIn))
{
}

bool PagePermissions::mayAsk(const QUrl &origin) const
{
    return m_isSignedIn() && !origin.host().isEmpty()
        && (origin.scheme() == u"https"
            || (origin.scheme() == u"http" && ServerAddress::isLoopback(origin)));
}

std::optional<bool> PagePermissions::answer(const QUrl &origin, Matter matter) const
{
    const auto of = stored().value(BridgeTrust::originOf(origin)).toObject();
    const auto found = of.constFind(nameOf(matter));
    return found != of.constEnd() && found->isBool() ? std::optional(found->toBool())
                                                     : std::nullopt;
}

void PagePermissions::remember(const QUrl &origin, Matter matter, bool allowed)
{
    QJsonObject origins = stored();
    QJsonObject of = origins.value(BridgeTrust::originOf(origin)).toObject();
    of.insert(nameOf(matter), allowed);
    origins.insert(BridgeTrust::originOf(origin), of);
    store(origins);
}

QList<PagePermissions::Answer> PagePermissions::answers() const
{
    const auto names = QMetaEnum::fromType<Matter>();
    QList<Answer> all;
    const QJsonObject origins = stored();
    for (const QString &origin : origins.keys()) {
        for (int i = 0; i < names.keyCount(); ++i) {
            const auto matter = Matter(names.value(i));
            if (const auto allowed = answer(QUrl(origin), matter))
                all.append({origin, matter, *allowed});
        }
    }
    return all;
}

void PagePermissions::takeBack(const QString &origin, Matter matter)
{
    QJsonObject origins = stored();
    QJsonObject of = origins.value(origin).toObject();
    of.remove(nameOf(matter));
    if (of.isEmpty())
        origins.remove(origin);
    else
        origins.insert(origin, of);
    store(origins);
    Q_EMIT takenBack(QUrl(origin), matter);
}

void PagePermissions::clear()
{
    store({});
}

QJsonObject PagePermissions::stored() const
{
    return QJsonDocument::fromJson(m_defaults->stringForKey(settingsKey).toUtf8()).object();
}

void PagePermissions::store(const QJsonObject &origins)
{
    if (origins.isEmpty())
        m_defaults->removeObjectForKey(settingsKey);
    else
        m_defaults->setObject(
            QString::fromUtf8(QJsonDocument(origins).toJson(QJsonDocument::Compact)), settingsKey);
    m_defaults->synchronize();
}
