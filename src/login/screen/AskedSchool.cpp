#include "login/screen/AskedSchool.h"

#include "platform/storage/UserDefaults.h"

using namespace Qt::StringLiterals;

namespace {

const QString key = QStringLiteral("WechatLoginSchool");

}

void AskedSchool::keep(UserDefaults *defaults) const
{
    defaults->setObject(QVariantMap {{u"name"_s, name}, {u"siteCode"_s, siteCode},
                            {u"provinces"_s, provinces}, {u"city"_s, city}, {u"isLocal"_s, isLocal},
                            {u"localUrl"_s, localUrl}, {u"localUrlQe"_s, localUrlQe}},
        key);
    defaults->synchronize();
}

std::optional<AskedSchool> AskedSchool::take(UserDefaults *defaults)
{
    const QVariantMap kept = defaults->objectForKey(key).toMap();
    if (kept.isEmpty())
        return {};
    defaults->removeObjectForKey(key);
    defaults->synchronize();
    const auto text = [&kept](const QString &name) { return kept[name].toString(); };
    return AskedSchool {text(u"name"_s), text(u"siteCode"_s), text(u"provinces"_s), text(u"city"_s),
        kept[u"isLocal"_s].toBool(), text(u"localUrl"_s), text(u"localUrlQe"_s)};
}
