#include "upload/preparation/codecs/Transcoding.h"

#include "upload/preparation/codecs/MediaFramework.h"

#include <QFile>

using namespace std::chrono_literals;

namespace {

// How long no frame may come through.
constexpr auto longestStandstill = 30s;

// The number of threads is part of the result. Encoded queues have no bound: a clip whose sound
// lies far behind its picture would otherwise leave picture and sound waiting for each other. They
// hold less than the exported file.
constexpr auto videoBranch
    = "queue max-size-buffers=4 max-size-bytes=0 max-size-time=0 ! videoconvert"
      " ! videoscale add-borders=false"
      " ! video/x-raw,format=I420,width=%1,height=%2,pixel-aspect-ratio=1/1"
      " ! videoflip video-direction=auto"
      " ! x264enc threads=4 pass=qual quantizer=23 speed-preset=veryfast"
      " ! video/x-h264,profile=main"
      " ! queue max-size-buffers=0 max-size-bytes=0 max-size-time=0";
constexpr auto audioBranch
    = "queue ! audioconvert ! audioresample ! audio/x-raw,channels=2,rate=44100"
      " ! avenc_aac bitrate=128000"
      " ! queue max-size-buffers=0 max-size-bytes=0 max-size-time=0";
constexpr auto settingsVersion = "mp4 1";

// What the decoder's thread needs while it brings in the streams.
struct Branches
{
    GstElement *pipeline;
    GstElement *muxer;
    QByteArray video;
    bool hasVideo = false;
    bool hasAudio = false;
};

// The first stream of a kind gets its branch; others stay unused.
void streamFound(GstElement *, GstPad *pad, gpointer data)
{
    auto *branches = static_cast<Branches *>(data);
    const GstCapsPointer caps(gst_pad_query_caps(pad, nullptr));
    const char *kind = gst_structure_get_name(gst_caps_get_structure(caps.get(), 0));
    const bool isVideo = g_str_has_prefix(kind, "video/x-raw");
    const bool isAudio = g_str_has_prefix(kind, "audio/x-raw");
    bool &there = isVideo ? branches->hasVideo : branches->hasAudio;
    if (!(isVideo || isAudio) || there)
        return;
    there = true;
    GError *error = nullptr;
    GstElement *branch = gst_parse_bin_from_description(
        isVideo ? branches->video.constData() : audioBranch, TRUE, &error);
    const GErrorPointer owned(error);
    if (error) {
        GST_ELEMENT_ERROR(branches->pipeline, CORE, MISSING_PLUGIN, ("%s", error->message), (NULL));
        if (branch)
            gst_object_unref(gst_object_ref_sink(branch));
        return;
    }
    gst_bin_add(GST_BIN(branches->pipeline), branch);
    const GstObjectPointer<GstPad> input(gst_element_get_static_pad(branch, "sink"));
    if (!gst_element_link_pads(branch, "src", branches->muxer, isVideo ? "video_%u" : "audio_%u")
        || gst_pad_link(pad, input.get()) != GST_PAD_LINK_OK)
        GST_ELEMENT_ERROR(branches->pipeline, CORE, NEGOTIATION, ("streams do not fit"), (NULL));
    gst_element_sync_state_with_parent(branch);
}

std::chrono::nanoseconds position(GstElement *pipeline)
{
    gint64 position = 0;
    if (!gst_element_query_position(pipeline, GST_FORMAT_TIME, &position))
        return 0ns;
    return std::chrono::nanoseconds(position);
}

QString runToTheEnd(GstElement *pipeline, std::chrono::nanoseconds duration,
    const Transcoding::Progress &progress, const std::stop_token &stop)
{
    const GstObjectPointer<GstBus> bus(gst_element_get_bus(pipeline));
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    auto reached = 0ns;
    auto lastAdvance = std::chrono::steady_clock::now();
    while (!stop.stop_requested()) {
        const GstMessagePointer message(gst_bus_timed_pop_filtered(bus.get(),
            std::chrono::nanoseconds(MediaFramework::stopInterval).count(),
            GstMessageType(GST_MESSAGE_ERROR | GST_MESSAGE_EOS)));
        if (message)
            return GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS
                ? QString()
                : MediaFramework::textOf(message.get());
        const auto now = std::chrono::steady_clock::now();
        const auto here = position(pipeline);
        if (here > reached) {
            reached = here;
            lastAdvance = now;
            if (duration > 0ns)
                progress(qMin(1.0, double(reached.count()) / double(duration.count())));
        } else if (now - lastAdvance > longestStandstill) {
            return QStringLiteral("the clip does not go on");
        }
    }
    return QStringLiteral("stopped");
}

}

const char *Transcoding::settings()
{
    static const QByteArray all = QByteArray(settingsVersion) + videoBranch + audioBranch;
    return all.constData();
}

Transcoding::Transcoding(const ClipExport &order)
    : m_order(order)
{
}

QString Transcoding::run(const Progress &progress, std::stop_token stop)
{
    const MediaFramework::Pipeline pipeline(gst_pipeline_new(nullptr));
    GstElement *decoder = gst_element_factory_make("uridecodebin", nullptr);
    GstElement *muxer = gst_element_factory_make("mp4mux", nullptr);
    GstElement *sink = gst_element_factory_make("filesink", nullptr);
    for (GstElement *element : {decoder, muxer, sink}) {
        if (element)
            gst_bin_add(GST_BIN(pipeline.get()), element);
    }
    if (!decoder || !muxer || !sink || !gst_element_link(muxer, sink))
        return QStringLiteral("a media plugin is missing");
    g_object_set(decoder, "uri", MediaFramework::uriOf(m_order.sourcePath).constData(), nullptr);
    g_object_set(sink, "location", QFile::encodeName(m_order.targetPath).constData(), nullptr);

    const QSize stored = m_order.source.isTurned ? m_order.size.transposed() : m_order.size;
    Branches branches {pipeline.get(), muxer,
        QString::fromLatin1(videoBranch).arg(stored.width()).arg(stored.height()).toLatin1()};
    g_signal_connect(decoder, "pad-added", G_CALLBACK(streamFound), &branches);
    const QString error = runToTheEnd(pipeline.get(), m_order.source.duration, progress, stop);
    // The decoder's threads use the branches.
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    if (error.isNull() && !branches.hasVideo)
        return QStringLiteral("no video");
    return error;
}
