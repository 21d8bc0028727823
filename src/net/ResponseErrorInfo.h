#pragma once

#include <QString>

//! Why a call failed: the server's or the transport's number, and the text a screen may show.
struct ResponseErrorInfo
{
    qint64 code = 0;
    QString errorDescription;

    static ResponseErrorInfo createErrorInfoWithCode(qint64 code, const QString &errorDescription)
    {
        return {code, errorDescription};
    }

    bool operator==(const ResponseErrorInfo &) const = default;
};
