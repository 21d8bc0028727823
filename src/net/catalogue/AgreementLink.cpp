#include "net/catalogue/AgreementLink.h"

#include <QJsonValue>

using namespace Qt::StringLiterals;

std::optional<AgreementLink> AgreementLink::named(const QString &name)
{
    if (name == u"protocol")
        return AgreementLink {Agreement::User, u"用户协议"_s};
    if (name == u"privacy")
        return AgreementLink {Agreement::Privacy, u"隐私政策"_s};
    return {};
}

QString AgreementLink::addressIn(const QJsonValue &answer)
{
    return answer[u"url"].toString();
}

QString AgreementLink::noAddressText()
{
    return u"页面地址无效，请稍后再试"_s;
}
