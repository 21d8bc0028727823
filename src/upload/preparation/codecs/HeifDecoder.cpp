#include "upload/preparation/codecs/HeifDecoder.h"

#include "platform/media/BoundedImage.h"

#include <libheif/heif.h>

#include <QColorSpace>

#include <array>
#include <memory>

namespace {

template <auto giveBack>
struct GivesBack
{
    template <typename Type>
    void operator()(Type *object) const
    {
        giveBack(object);
    }
};
using Context = std::unique_ptr<heif_context, GivesBack<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, GivesBack<heif_image_handle_release>>;
using Options = std::unique_ptr<heif_decoding_options, GivesBack<heif_decoding_options_free>>;
using Pixels = std::unique_ptr<heif_image, GivesBack<heif_image_release>>;

HeifPhoto failure(const heif_error &error)
{
    return {{}, QString::fromUtf8(error.message)};
}

QColorSpace colorSpaceOf(const heif_image_handle *handle)
{
    QByteArray profile(
        qsizetype(heif_image_handle_get_raw_color_profile_size(handle)), Qt::Uninitialized);
    if (profile.isEmpty()
        || heif_image_handle_get_raw_color_profile(handle, profile.data()).code != heif_error_Ok)
        return {};
    return QColorSpace::fromIccProfile(profile);
}

QSize sizeOf(const heif_image_handle *handle)
{
    return {heif_image_handle_get_width(handle), heif_image_handle_get_height(handle)};
}

HeifPhoto decodePixels(const heif_image_handle *handle)
{
    // The library cannot make it smaller on the way.
    if (BoundedImage::pixelsOf(sizeOf(handle)) > BoundedImage::mostPixels)
        return {{}, QStringLiteral("too large a picture")};
    const Options options(heif_decoding_options_alloc());
    options->convert_hdr_to_8bit = true;
    options->strict_decoding = true;
    heif_image *decoded = nullptr;
    const heif_error error = heif_decode_image(
        handle, &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGB, options.get());
    const Pixels pixels(decoded);
    if (error.code != heif_error_Ok)
        return failure(error);
    int bytesPerLine = 0;
    const uint8_t *plane
        = heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &bytesPerLine);
    const QSize size(heif_image_get_width(decoded, heif_channel_interleaved),
        heif_image_get_height(decoded, heif_channel_interleaved));
    QImage image(plane, size.width(), size.height(), bytesPerLine, QImage::Format_RGB888);
    image.detach(); // before the pixels go
    image.setColorSpace(colorSpaceOf(handle));
    if (image.isNull())
        return {{}, QStringLiteral("no room for the picture")};
    return {image, {}};
}

int shorterSide(const heif_image_handle *handle)
{
    const QSize size = sizeOf(handle);
    return qMin(size.width(), size.height());
}

// The smallest thumbnail that is large enough; null when there is none.
Handle thumbnailOf(const heif_image_handle *main, int side)
{
    std::array<heif_item_id, 8> ids {};
    const int count
        = heif_image_handle_get_list_of_thumbnail_IDs(main, ids.data(), int(ids.size()));
    Handle best;
    for (int i = 0; i < count; ++i) {
        heif_image_handle *found = nullptr;
        heif_image_handle_get_thumbnail(main, ids[size_t(i)], &found);
        Handle thumbnail(found);
        if (thumbnail && shorterSide(found) >= side
            && (!best || shorterSide(found) < shorterSide(best.get())))
            best = std::move(thumbnail);
    }
    return best;
}

// \a side: 0 for the full size.
HeifPhoto decodeFile(const QByteArray &file, int side)
{
    const Context context(heif_context_alloc());
    heif_error error = heif_context_read_from_memory_without_copy(
        context.get(), file.constData(), size_t(file.size()), nullptr);
    if (error.code != heif_error_Ok)
        return failure(error);
    heif_image_handle *primary = nullptr;
    error = heif_context_get_primary_image_handle(context.get(), &primary);
    const Handle main(primary);
    if (error.code != heif_error_Ok)
        return failure(error);
    const Handle thumbnail = side > 0 ? thumbnailOf(primary, side) : Handle();
    return decodePixels(thumbnail ? thumbnail.get() : primary);
}

}

HeifPhoto HeifDecoder::decode(const QByteArray &file)
{
    return decodeFile(file, 0);
}

HeifPhoto HeifDecoder::decodeSmall(const QByteArray &file, int side)
{
    return decodeFile(file, side);
}
