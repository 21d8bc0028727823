#include "platform/HTTPQuery.h"

namespace {

bool isNil(const QVariant &value)
{
    return !value.isValid()
        || (value.metaType().id() == QMetaType::QString && value.toString().isNull());
}

}

QByteArray HTTPQuery::encoded(const HTTPParameters &parameters)
{
    QByteArrayList pairs;
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
        if (!isNil(it.value()))
            pairs << QUrl::toPercentEncoding(it.key()) + '='
                    + QUrl::toPercentEncoding(it.value().toString());
    }
    return pairs.join('&');
}

QUrl HTTPQuery::urlWithQuery(const QString &address, const HTTPParameters &parameters)
{
    QByteArray text = QUrl(address).toEncoded();
    const QByteArray query = encoded(parameters);
    if (!query.isEmpty()) {
        if (!text.contains('?'))
            text += '?';
        else if (!text.endsWith('?'))
            text += '&';
        text += query;
    }
    return QUrl::fromEncoded(text);
}
