#include "model/DictionaryMapper.h"

#include <QMetaProperty>
#include <QVariant>

#include <cmath>

namespace {

QVariant converted(const QJsonValue &value, QMetaType wanted)
{
    switch (wanted.id()) {
    case QMetaType::QString:
        if (const QString text = DictionaryMapper::text(value); !text.isNull())
            return text;
        return {};
    case QMetaType::Bool:
        if (const auto yes = DictionaryMapper::boolean(value))
            return *yes;
        return {};
    case QMetaType::Int:
        if (const auto number = DictionaryMapper::integer(value); number && *number == int(*number))
            return int(*number);
        return {};
    case QMetaType::Double:
        if (const auto number = DictionaryMapper::real(value))
            return *number;
        return {};
    default:
        Q_UNREACHABLE();
    }
}

}

QString DictionaryMapper::text(const QJsonValue &value)
{
    if (value.isBool())
        return QString::number(int(value.toBool()));
    if (value.isDouble())
        return value.toVariant().toString();
    return value.toString();
}

std::optional<qint64> DictionaryMapper::integer(const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool() ? 1 : 0;
    if (value.isDouble()) {
        const double number = value.toDouble();
        // Beyond this a double no longer holds every integer.
        constexpr double exact = 9007199254740992.0;
        if (std::abs(number) <= exact)
            return qint64(number);
        return std::nullopt;
    }
    bool ok = false;
    const qint64 number = value.toString().trimmed().toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<bool> DictionaryMapper::boolean(const QJsonValue &value)
{
    const QString text = value.toString().trimmed().toLower();
    if (text == u"true" || text == u"yes")
        return true;
    if (text == u"false" || text == u"no")
        return false;
    const auto number = integer(value);
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<double> DictionaryMapper::real(const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool() ? 1 : 0;
    bool ok = value.isDouble();
    const double number = ok ? value.toDouble() : value.toString().trimmed().toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

void DictionaryMapper::fill(
    void *gadget, const QMetaObject &metaObject, const QJsonObject &dictionary)
{
    for (int i = 0; i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        const auto found = dictionary.constFind(QLatin1StringView(property.name()));
        if (found == dictionary.constEnd())
            continue;
        const QVariant value = converted(found.value(), property.metaType());
        if (!value.isValid())
            continue;
        // A member's own write skips what compares equal, as an empty text does to the null one.
        if (value.toString().isEmpty())
            property.writeOnGadget(gadget, QStringLiteral(" "));
        property.writeOnGadget(gadget, value);
    }
}
