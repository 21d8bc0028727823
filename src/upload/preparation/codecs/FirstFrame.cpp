#include "upload/preparation/codecs/FirstFrame.h"

#include "upload/preparation/codecs/MediaFramework.h"

#include <gst/video/video.h>

#include <array>

using namespace std::chrono_literals;

namespace {

constexpr auto framePatience = 5s; // for one frame
constexpr std::array laterPlaces {0.1, 0.35}; // of the duration
constexpr int leastContrast = 24; // of 255

// Reads with one thread: many clips may be looked at together.
constexpr auto description
    = "uridecodebin name=source"
      " ! videoconvert ! videoscale add-borders=false"
      " ! video/x-raw,pixel-aspect-ratio=1/1 ! videoflip video-direction=auto ! videoconvert"
      " ! video/x-raw,format=RGB,pixel-aspect-ratio=1/1 ! fakesink name=sink "
      "enable-last-sample=true";

// False: no frame will come.
bool waitForFrame(GstElement *pipeline, const std::stop_token &stop)
{
    const GstObjectPointer<GstBus> bus(gst_element_get_bus(pipeline));
    const auto end = std::chrono::steady_clock::now() + framePatience;
    while (!stop.stop_requested() && std::chrono::steady_clock::now() < end) {
        const GstMessagePointer message(gst_bus_timed_pop_filtered(bus.get(),
            std::chrono::nanoseconds(MediaFramework::stopInterval).count(),
            GstMessageType(GST_MESSAGE_ERROR | GST_MESSAGE_EOS | GST_MESSAGE_ASYNC_DONE)));
        if (message)
            return GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ASYNC_DONE;
    }
    return false;
}

QImage frameShown(GstElement *sink)
{
    GstSample *last = nullptr;
    g_object_get(sink, "last-sample", &last, nullptr);
    const GstSamplePointer sample(last);
    GstVideoInfo info;
    GstVideoFrame frame;
    if (!sample || !gst_video_info_from_caps(&info, gst_sample_get_caps(last))
        || !gst_video_frame_map(&frame, &info, gst_sample_get_buffer(last), GST_MAP_READ))
        return {};
    const QImage image(static_cast<const uchar *>(GST_VIDEO_FRAME_PLANE_DATA(&frame, 0)),
        GST_VIDEO_FRAME_WIDTH(&frame), GST_VIDEO_FRAME_HEIGHT(&frame),
        GST_VIDEO_FRAME_PLANE_STRIDE(&frame, 0), QImage::Format_RGB888);
    const QImage copy = image.copy();
    gst_video_frame_unmap(&frame);
    return copy;
}

bool showsSomething(const QImage &image)
{
    const QImage small = image.scaled(16, 16).convertToFormat(QImage::Format_Grayscale8);
    int darkest = 255;
    int lightest = 0;
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            darkest = qMin(darkest, qGray(small.pixel(x, y)));
            lightest = qMax(lightest, qGray(small.pixel(x, y)));
        }
    }
    return lightest - darkest >= leastContrast;
}

}

VideoFrame FirstFrame::of(const QString &filePath, std::stop_token stop)
{
    if (!MediaFramework::start())
        return {};
    GError *error = nullptr;
    const MediaFramework::Pipeline pipeline(gst_parse_launch(description, &error));
    const GErrorPointer owned(error);
    if (!pipeline || error)
        return {};
    GstBin *bin = GST_BIN(pipeline.get());
    const GstObjectPointer<GstElement> source(gst_bin_get_by_name(bin, "source"));
    const GstObjectPointer<GstElement> sink(gst_bin_get_by_name(bin, "sink"));
    g_object_set(source.get(), "uri", MediaFramework::uriOf(filePath).constData(), nullptr);
    gst_element_set_state(pipeline.get(), GST_STATE_PAUSED);
    if (!waitForFrame(pipeline.get(), stop))
        return {};

    VideoFrame frame {frameShown(sink.get()), 0ms};
    gint64 duration = 0;
    if (gst_element_query_duration(pipeline.get(), GST_FORMAT_TIME, &duration) && duration > 0)
        frame.duration = std::chrono::milliseconds(duration / GST_MSECOND);
    for (const double place : laterPlaces) {
        if (frame.image.isNull() || showsSomething(frame.image) || duration <= 0)
            break;
        const auto flags = GstSeekFlags(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_KEY_UNIT);
        if (!gst_element_seek_simple(
                pipeline.get(), GST_FORMAT_TIME, flags, gint64(double(duration) * place))
            || !waitForFrame(pipeline.get(), stop))
            break;
        const QImage later = frameShown(sink.get());
        if (showsSomething(later))
            frame.image = later;
    }
    return stop.stop_requested() ? VideoFrame() : frame;
}
