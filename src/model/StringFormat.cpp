#include "model/StringFormat.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

QString StringFormat::description(const QString &value)
{
    return value.isNull() ? QStringLiteral("(null)") : value;
}

QString StringFormat::description(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("<null>");
    case QJsonValue::Undefined:
        return QStringLiteral("(null)");
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QJsonValue::Array:
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    case QJsonValue::Object:
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    case QJsonValue::Double:
    case QJsonValue::String:
        break;
    }
    return value.toVariant().toString();
}

QString StringFormat::description(const QVariant &value)
{
    if (!value.isValid())
        return QStringLiteral("(null)");
    if (value.metaType().id() == QMetaType::QString)
        return description(value.toString());
    return description(QJsonValue::fromVariant(value));
}

QString StringFormat::replaced(const QString &format, const QStringList &arguments)
{
    QString text;
    qsizetype from = 0;
    for (const QString &argument : arguments) {
        const qsizetype at = format.indexOf(u"%@", from);
        if (at < 0)
            break;
        text += QStringView(format).mid(from, at - from);
        text += argument;
        from = at + 2;
    }
    text += QStringView(format).mid(from);
    return text;
}
