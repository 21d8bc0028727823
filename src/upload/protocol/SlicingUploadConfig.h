#pragma once

#include <QMetaType>
#include <QString>

//! What a page asks for when it wants an upload; the keys of its request are the names.
struct SlicingUploadConfig
{
    Q_GADGET
    Q_PROPERTY(QString siteURl MEMBER siteURl)
    Q_PROPERTY(QString upload_server MEMBER upload_server)
    Q_PROPERTY(QString checkFile_server MEMBER checkFile_server)
    Q_PROPERTY(QString checkChunk_server MEMBER checkChunk_server)
    Q_PROPERTY(QString complete_upload_server MEMBER complete_upload_server)
    Q_PROPERTY(bool isVideoSelect MEMBER isVideoSelect)
    Q_PROPERTY(bool isCameraSelect MEMBER isCameraSelect)
    Q_PROPERTY(bool isFileSelect MEMBER isFileSelect)
    Q_PROPERTY(int fileNumLimit MEMBER fileNumLimit)
    Q_PROPERTY(QString upfileType MEMBER upfileType)
    Q_PROPERTY(double maxFileSingleSizeLimit MEMBER maxFileSingleSizeLimit)
    Q_PROPERTY(double chunkSize MEMBER chunkSize)
    Q_PROPERTY(QString column_key MEMBER column_key)
    Q_PROPERTY(QString uploadType MEMBER uploadType)
    Q_PROPERTY(QString themeColor MEMBER themeColor)

public:
    QString siteURl; //!< base address of the file service; the paths below follow it directly
    QString upload_server; //!< path of the call that reports a part
    QString checkFile_server;
    QString checkChunk_server;
    QString complete_upload_server; //!< path of the call that joins the parts
    bool isVideoSelect = false;
    bool isCameraSelect = false;
    bool isFileSelect = false;
    int fileNumLimit = 0; //!< most items to pick
    QString upfileType;
    double maxFileSingleSizeLimit = 0; //!< bytes
    double chunkSize = 0; //!< read, and disregarded: fragments have one size
    QString column_key; //!< passed through to the file service, as is the next
    QString uploadType;
    QString themeColor; //!< of the picker

    bool operator==(const SlicingUploadConfig &) const = default;
};
