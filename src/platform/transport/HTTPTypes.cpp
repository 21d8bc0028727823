#include "platform/transport/HTTPTypes.h"

QByteArray HTTPResponse::header(const QByteArray &name) const
{
    QByteArray joined;
    for (const auto &[field, value] : headers) {
        if (field.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        if (!joined.isNull())
            joined += ", ";
        joined += value;
    }
    return joined;
}
