#pragma once

#include <QString>

#include <optional>

//! Why a call failed: the server's or the transport's number, and the text a screen may show.
struct ResponseErrorInfo
{
    qint64 code = 0;
    QString errorDescription;

    static ResponseErrorInfo createErrorInfoWithCode(qint64 code, const QString &errorDescription)
    {
        return {code, errorDescription};
    }

    //! What is shown where nobody says what went wrong.
    static QString requestError() { return QStringLiteral("请求错误"); }
    //! What to show for a failure: an answer of the wrong shape brings no error, and a server's
    //! error may bring an empty text, which would show nothing at all.
    static QString textOf(const std::optional<ResponseErrorInfo> &error)
    {
        const QString text = error ? error->errorDescription : QString();
        return text.trimmed().isEmpty() ? requestError() : text;
    }

    bool operator==(const ResponseErrorInfo &) const = default;
};
