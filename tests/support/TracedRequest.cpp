#include "support/TracedRequest.h"

#include <QUrlQuery>

TracedRequest TracedRequest::fromJson(const QJsonObject &entry)
{
    TracedRequest request {entry[u"method"].toString(), entry[u"host"].toString(),
        entry[u"path"].toString(), entry[u"query"].toString().toUtf8(), {},
        entry[u"body"].toString().toUtf8(), entry[u"status"].toInt(),
        entry[u"body_size"].toInteger(), entry[u"peer"].toString()};
    const QJsonObject headers = entry[u"headers"].toObject();
    for (auto it = headers.begin(); it != headers.end(); ++it)
        request.headers.insert(it.key().toLower(), it.value().toString());
    return request;
}

QString TracedRequest::value(const QString &name) const
{
    const QUrlQuery pairs(QString::fromUtf8(method == u"POST" ? body : query));
    return pairs.hasQueryItem(name) ? pairs.queryItemValue(name, QUrl::FullyDecoded) : QString();
}
