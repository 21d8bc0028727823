#include "platform/http/DataUrl.h"

std::optional<HTTPResponse> DataUrl::content(const QUrl &url)
{
    if (url.scheme() != u"data")
        return {};
    const QByteArray text = url.path(QUrl::FullyEncoded).toLatin1();
    const qsizetype comma = text.indexOf(',');
    if (comma < 0)
        return {};
    QByteArray type = text.first(comma);
    QByteArray body = QByteArray::fromPercentEncoding(text.sliced(comma + 1));
    if (type.endsWith(";base64")) {
        type.chop(qsizetype(sizeof ";base64" - 1));
        const auto decoded
            = QByteArray::fromBase64Encoding(body, QByteArray::AbortOnBase64DecodingErrors);
        if (!decoded)
            return {};
        body = *decoded;
    }
    return HTTPResponse {200, {{"Content-Type", type}}, body};
}
