#include "upload/preparation/codecs/ClipReader.h"

#include "upload/preparation/codecs/MediaFramework.h"

#include <gst/pbutils/pbutils.h>

#include <QByteArray>

#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto clipPatience = 10s; // of one clip
constexpr auto pollInterval = 5ms;

struct StreamList
{
    explicit StreamList(GstDiscovererInfo *info)
        : first(gst_discoverer_info_get_video_streams(info))
    {
    }
    ~StreamList() { gst_discoverer_stream_info_list_free(first); }
    GList *first;
};

QByteArray orientation(GstDiscovererStreamInfo *stream)
{
    gchar *text = nullptr;
    const GstTagList *tags = gst_discoverer_stream_info_get_tags(stream);
    if (tags)
        gst_tag_list_get_string(tags, GST_TAG_IMAGE_ORIENTATION, &text);
    const QByteArray found(text);
    g_free(text);
    return found;
}

// Pixels that are no squares are made squares by width.
QSize shownSize(GstDiscovererVideoInfo *video)
{
    const quint64 across = gst_discoverer_video_info_get_par_num(video);
    const quint64 down = gst_discoverer_video_info_get_par_denom(video);
    quint64 width = gst_discoverer_video_info_get_width(video);
    if (across > 0 && down > 0)
        width = width * across / down;
    return {int(qMin<quint64>(width, G_MAXINT)), int(gst_discoverer_video_info_get_height(video))};
}

ClipInfo infoOf(GstDiscovererInfo *found, const GError *error)
{
    ClipInfo info;
    const StreamList streams(found);
    if (!streams.first) {
        info.error = error ? QString::fromUtf8(error->message) : QStringLiteral("no video");
        return info;
    }
    auto *video = GST_DISCOVERER_VIDEO_INFO(streams.first->data);
    if (gst_discoverer_video_info_is_image(video)) {
        info.error = QStringLiteral("a picture, no video");
        return info;
    }
    const QByteArray turn = orientation(GST_DISCOVERER_STREAM_INFO(video));
    info.isTurned = turn.endsWith("rotate-90") || turn.endsWith("rotate-270");
    info.size = info.isTurned ? shownSize(video).transposed() : shownSize(video);
    if (info.size.isEmpty())
        info.error = QStringLiteral("video without a size");
    const GstClockTime duration = gst_discoverer_info_get_duration(found);
    if (GST_CLOCK_TIME_IS_VALID(duration))
        info.duration = std::chrono::milliseconds(duration / GST_MSECOND);
    return info;
}

void discovered(GstDiscoverer *, GstDiscovererInfo *found, GError *error, gpointer info)
{
    *static_cast<std::optional<ClipInfo> *>(info) = infoOf(found, error);
}

}

ClipInfo ClipReader::read(const QString &filePath, std::stop_token stop)
{
    const auto failure = [](const QString &text) {
        ClipInfo info;
        info.error = text;
        return info;
    };
    if (!MediaFramework::start())
        return failure(QStringLiteral("no media framework"));
    GError *error = nullptr;
    // A context of our own: nobody turns the default one, and the plain call could not be stopped.
    const GMainContextPointer context(g_main_context_new());
    g_main_context_push_thread_default(context.get());
    std::optional<ClipInfo> info;
    {
        const GObjectPointer<GstDiscoverer> discoverer(
            gst_discoverer_new(std::chrono::nanoseconds(clipPatience).count(), &error));
        const GErrorPointer owned(error);
        if (discoverer) {
            g_signal_connect(discoverer.get(), "discovered", G_CALLBACK(discovered), &info);
            gst_discoverer_start(discoverer.get());
            gst_discoverer_discover_uri_async(
                discoverer.get(), MediaFramework::uriOf(filePath).constData());
            while (!info && !stop.stop_requested()) {
                if (!g_main_context_iteration(context.get(), FALSE))
                    std::this_thread::sleep_for(pollInterval);
            }
            gst_discoverer_stop(discoverer.get());
        }
    }
    g_main_context_pop_thread_default(context.get());
    return info.value_or(failure(QStringLiteral("stopped")));
}
