#pragma once

#include "platform/NetworkReachabilityManager.h"
#include "support/TracedRequest.h"

#include <QFile>
#include <QUrlQuery>

//! A network that is there ('+') or not, as asked one time after the other; afterwards it is there.
struct ScriptedReachability : NetworkReachabilityManager
{
    Status networkReachabilityStatus() const override
    {
        const bool isThere = script.isEmpty() || script.takeFirst() == u'+';
        return isThere ? Status::Unknown : Status::NotReachable;
    }

    mutable QList<QChar> script;
};

//! What is to be seen of an upload from outside.
namespace UploadProbe {

//! "check", "chunk 1", "PUT 1", "done 1", "complete 3".
inline QString told(const TracedRequest &request)
{
    if (request.method == u"PUT")
        return u"PUT "_qs
            + QUrlQuery(QString::fromUtf8(request.query)).queryItemValue(u"partNumber"_qs);
    static const QMap<QString, QString> names {{u"/file/check"_qs, u"check"_qs},
        {u"/file/checkChunk"_qs, u"chunk "_qs}, {u"/file/chunkDone"_qs, u"done "_qs},
        {u"/file/complete"_qs, u"complete "_qs}};
    return names.value(request.path, request.path) + request.value(u"chunk"_qs)
        + request.value(u"chunks"_qs);
}

//! Of this process.
inline qint64 anonymousBytes()
{
    QFile status(u"/proc/self/status"_qs);
    const bool isOpen = status.open(QIODevice::ReadOnly);
    const QString line = QString::fromLatin1(status.readAll()).section(u"RssAnon:"_qs, 1);
    const qint64 kilobytes = line.section(u"kB"_qs, 0, 0).trimmed().toLongLong();
    if (!isOpen || kilobytes == 0)
        qFatal("no figures of this process");
    return kilobytes * 1024;
}

}
