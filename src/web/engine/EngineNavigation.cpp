#include "web/engine/EngineNavigation.h"

#include <QSet>

using namespace Qt::StringLiterals;

bool EngineNavigation::isLoadable(const QUrl &url)
{
    return url.isValid() && (url.scheme() == u"http" || url.scheme() == u"https");
}

bool EngineNavigation::mayFollow(const QUrl &url)
{
    static const QSet<QString> shown {u"http"_s, u"https"_s, u"about"_s, u"data"_s, u"blob"_s,
        u"javascript"_s, u"chrome-error"_s};
    return shown.contains(url.scheme())
        && url.host().compare(u"__bridge_loaded__", Qt::CaseInsensitive) != 0;
}
