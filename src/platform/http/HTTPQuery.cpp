#include "platform/http/HTTPQuery.h"

namespace {

bool isNil(const QVariant &value)
{
    return !value.isValid()
        || (value.metaType().id() == QMetaType::QString && value.toString().isNull());
}

}

QByteArray HTTPQuery::encoded(const HTTPParameters &parameters)
{
    QByteArray text;
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
        if (isNil(it.value()))
            continue;
        if (!text.isEmpty())
            text += '&';
        text += QUrl::toPercentEncoding(it.key());
        text += '=';
        text += QUrl::toPercentEncoding(it.value().toString());
    }
    return text;
}

QUrl HTTPQuery::urlWithQuery(const QString &address, const HTTPParameters &parameters)
{
    // A stray "%" is mended before the query grows, or all of it would be escaped once more.
    QString text
        = address.contains(u'%') ? QString::fromLatin1(QUrl(address).toEncoded()) : address;
    const QByteArray query = encoded(parameters);
    if (!query.isEmpty()) {
        if (!text.contains(u'?'))
            text += u'?';
        else if (!text.endsWith(u'?'))
            text += u'&';
        text += QLatin1String(query);
    }
    return QUrl(text);
}
