#include "upload/preparation/MediaCodecs.h"

#include "upload/Logging.h"

#include <QCoreApplication>
#include <QPluginLoader>

const MediaCodecs &MediaCodecs::shared()
{
    static const MediaCodecs *const loaded = [] {
        QPluginLoader loader(
            QStringLiteral("%1/" VANT_CODECS_PLUGIN).arg(QCoreApplication::applicationDirPath()));
        const auto *codecs = qobject_cast<MediaCodecs *>(loader.instance());
        if (!codecs)
            qCWarning(lcUpload) << "no media codecs:" << loader.errorString();
        return codecs;
    }();
    static const MediaCodecs none;
    return loaded ? *loaded : none;
}
