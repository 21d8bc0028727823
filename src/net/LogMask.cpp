#include "net/LogMask.h"

QString LogMask::secret(const QString &value)
{
    return value.isEmpty() ? value : QStringLiteral("***");
}

HTTPParameters LogMask::parameters(const HTTPParameters &parameters)
{
    static const QStringList secretNames {QStringLiteral("user_pwd"), QStringLiteral("login_token"),
        QStringLiteral("sign"), QStringLiteral("code"), QStringLiteral("open_id"),
        QStringLiteral("union_id"), QStringLiteral("card_no")};
    HTTPParameters masked = parameters;
    for (const QString &name : secretNames) {
        if (const auto found = masked.find(name); found != masked.end())
            *found = secret(found->toString());
    }
    return masked;
}
