#pragma once

#include "platform/desktop/UrlOpener.h"

#include <QStringList>
#include <QUrl>

//! A desktop that has the programs of some schemes, and notes what it was asked to open.
class NotedUrlOpener : public UrlOpener
{
public:
    bool canOpenURL(const QUrl &url) const override { return schemes.contains(url.scheme()); }
    bool openURL(const QUrl &url) override
    {
        opened << url;
        return canOpenURL(url);
    }

    QStringList schemes {QStringLiteral("http"), QStringLiteral("https")};
    QList<QUrl> opened;
};
