#pragma once

#include <QFile>

//! Bytes of anonymous memory that this process holds, as the kernel counts them.
inline qint64 anonymousMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    const bool isOpen = status.open(QIODevice::ReadOnly);
    const QByteArray text = status.readAll();
    const QByteArray after = text.mid(text.indexOf("RssAnon:") + qsizetype(strlen("RssAnon:")));
    const qint64 kilobytes = after.left(after.indexOf("kB")).trimmed().toLongLong();
    if (!isOpen || kilobytes == 0)
        qFatal("no figures of this process");
    return kilobytes * 1024;
}
