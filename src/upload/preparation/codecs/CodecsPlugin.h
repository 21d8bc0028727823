#pragma once

#include "upload/preparation/MediaCodecs.h"

#include <QObject>

//! The codecs by libheif and GStreamer.
class CodecsPlugin : public QObject, public MediaCodecs
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "cn.vant.student.MediaCodecs")
    Q_INTERFACES(MediaCodecs)

public:
    void start() const override;
    HeifPhoto decodeHeif(const QByteArray &file) const override;
    HeifPhoto decodeSmallHeif(const QByteArray &file, int side) const override;
    ClipInfo clipInfo(const QString &filePath, std::stop_token stop) const override;
    VideoFrame firstFrame(const QString &filePath, std::stop_token stop) const override;
    QByteArray exportSettings() const override;
    QString exportClip(
        const ClipExport &order, const Progress &progress, std::stop_token stop) const override;
};
