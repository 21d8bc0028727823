#include "upload/preparation/codecs/CodecsPlugin.h"

#include "upload/preparation/codecs/ClipReader.h"
#include "upload/preparation/codecs/FirstFrame.h"
#include "upload/preparation/codecs/HeifDecoder.h"
#include "upload/preparation/codecs/MediaFramework.h"
#include "upload/preparation/codecs/Transcoding.h"

void CodecsPlugin::start() const
{
    MediaFramework::start();
}

HeifPhoto CodecsPlugin::decodeHeif(const QByteArray &file) const
{
    return HeifDecoder::decode(file);
}

HeifPhoto CodecsPlugin::decodeSmallHeif(const QByteArray &file, int side) const
{
    return HeifDecoder::decodeSmall(file, side);
}

ClipInfo CodecsPlugin::clipInfo(const QString &filePath, std::stop_token stop) const
{
    return ClipReader::read(filePath, std::move(stop));
}

VideoFrame CodecsPlugin::firstFrame(const QString &filePath, std::stop_token stop) const
{
    return FirstFrame::of(filePath, std::move(stop));
}

QByteArray CodecsPlugin::exportSettings() const
{
    return Transcoding::settings();
}

QString CodecsPlugin::exportClip(
    const ClipExport &order, const Progress &progress, std::stop_token stop) const
{
    return Transcoding(order).run(progress, std::move(stop));
}
