#include "net/request/LogMask.h"

#include <QStringList>

namespace {

const QStringList secretNames {QStringLiteral("user_pwd"), QStringLiteral("login_token"),
    QStringLiteral("sign"), QStringLiteral("open_id"), QStringLiteral("union_id"),
    QStringLiteral("card_no"), QStringLiteral("c_id"), QStringLiteral("authorization")};
// In an answer it is a status.
const QString authorisationCode = QStringLiteral("code");

}

QString LogMask::secret(const QString &value)
{
    return value.isEmpty() ? value : QStringLiteral("***");
}

HTTPParameters LogMask::parameters(const HTTPParameters &parameters)
{
    HTTPParameters masked = parameters;
    for (const QString &name : secretNames + QStringList {authorisationCode}) {
        if (const auto found = masked.find(name); found != masked.end())
            *found = secret(found->toString());
    }
    return masked;
}

QJsonValue LogMask::answer(const QJsonValue &answer)
{
    if (!answer.isObject())
        return answer;
    QJsonObject masked = answer.toObject();
    for (const QString &name : secretNames) {
        if (const auto found = masked.find(name); found != masked.end())
            *found = secret(found->toVariant().toString());
    }
    return masked;
}
