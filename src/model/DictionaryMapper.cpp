#include "model/DictionaryMapper.h"

#include <QMetaProperty>
#include <QVariant>

#include <cmath>

namespace {

QVariant stringFrom(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    if (value.isDouble() || value.isBool())
        return value.isBool() ? QString::number(int(value.toBool())) : value.toVariant().toString();
    return {};
}

QVariant converted(const QJsonValue &value, QMetaType wanted)
{
    switch (wanted.id()) {
    case QMetaType::QString:
        return stringFrom(value);
    case QMetaType::Bool:
        if (const auto number = DictionaryMapper::integer(value))
            return *number != 0;
        return {};
    case QMetaType::Int:
        if (const auto number = DictionaryMapper::integer(value);
            number && *number == int(*number))
            return int(*number);
        return {};
    default:
        Q_UNREACHABLE();
    }
}

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

void DictionaryMapper::fill(
    void *gadget, const QMetaObject &metaObject, const QJsonObject &dictionary)
{
    for (int i = 0; i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        const auto found = dictionary.constFind(QLatin1StringView(property.name()));
        if (found == dictionary.constEnd())
            continue;
        const QVariant value = converted(found.value(), property.metaType());
        if (value.isValid())
            property.writeOnGadget(gadget, value);
    }
}
