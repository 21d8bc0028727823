#include "login/form/StringValidators.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int addressParts = 4;
constexpr qulonglong largestAddressPart = 254;

bool matchesWhole(const QString &text, const QString &pattern)
{
    const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
    return whole.match(text).hasMatch();
}

bool isAddressPart(const QString &part)
{
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (!std::all_of(part.begin(), part.end(), isDigit))
        return false;
    bool ok = part.isEmpty();
    const qulonglong value = ok ? 0 : part.toULongLong(&ok);
    return ok && value <= largestAddressPart;
}

}

bool StringValidators::isEmail(const QString &text)
{
    return matchesWhole(text, uR"([A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\.[A-Za-z]{2,4})"_s);
}

bool StringValidators::isUrl(const QString &text)
{
    return matchesWhole(text, uR"(http(s)?:\/\/([\w-]+\.)+[\w-]+(\/[\w\- .\/?%&=]*)?)"_s);
}

bool StringValidators::isMobilephone(const QString &text)
{
    return matchesWhole(text, uR"([1-9]\d{10})"_s);
}

bool StringValidators::isChineseName(const QString &text)
{
    return matchesWhole(text, u"[一-龥]{2,16}"_s);
}

bool StringValidators::isIdentityCard(const QString &text)
{
    return matchesWhole(text, uR"((\d{14}|\d{17})(\d|[xX]))"_s);
}

bool StringValidators::isTelephone(const QString &text)
{
    static const QStringList numberPlans {
        uR"(1(3[0-9]|5[0-35-9]|8[025-9])\d{8})"_s, // any mobile number
        uR"(0(10|2[0-5789]|\d{3})\d{7,8})"_s, // fixed line with area code
        uR"(1((33|53|8[09])[0-9]|349)\d{7})"_s, // China Telecom
        uR"(1(3[0-2]|5[256]|8[56])\d{8})"_s, // China Unicom
        uR"(1(34[0-8]|(3[5-9]|5[017-9]|8[278])\d)\d{7})"_s, // China Mobile
    };
    return std::any_of(numberPlans.begin(), numberPlans.end(),
        [&](const QString &plan) { return matchesWhole(text, plan); });
}

bool StringValidators::isIPAddress(const QString &text)
{
    const QStringList parts = text.split(u'.');
    return parts.size() == addressParts && std::all_of(parts.begin(), parts.end(), isAddressPart);
}
