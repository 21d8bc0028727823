#include "upload/preparation/codecs/MediaFramework.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QUrl>

Q_LOGGING_CATEGORY(lcCodecs, "vant.codecs", QtInfoMsg)

bool MediaFramework::start()
{
    static const bool started = [] {
        GError *error = nullptr;
        const bool done = gst_init_check(nullptr, nullptr, &error);
        const GErrorPointer owned(error);
        if (!done)
            qCWarning(lcCodecs) << "no media framework:" << (error ? error->message : "unknown");
        return done;
    }();
    return started;
}

QByteArray MediaFramework::uriOf(const QString &filePath)
{
    return QUrl::fromLocalFile(QFileInfo(filePath).absoluteFilePath())
        .toEncoded(QUrl::FullyEncoded);
}

QString MediaFramework::textOf(GstMessage *message)
{
    GError *error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    const GErrorPointer owned(error);
    return QString::fromUtf8(error->message);
}

void MediaFramework::StopsPipeline::operator()(GstElement *pipeline) const
{
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
}
