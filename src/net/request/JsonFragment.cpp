#include "net/request/JsonFragment.h"

#include <QJsonArray>
#include <QJsonDocument>

std::optional<QJsonValue> JsonFragment::parse(const QByteArray &text)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    QByteArrayView value(text);
    if (value.startsWith(byteOrderMark))
        value = value.sliced(byteOrderMark.size());

    // The toolkit's parser takes only objects and lists at the top.
    QByteArray list;
    list.reserve(value.size() + 2);
    list.append('[').append(value).append(']');
    const QJsonArray values = QJsonDocument::fromJson(list).array();
    return values.size() == 1 ? std::optional<QJsonValue>(values.first()) : std::nullopt;
}
