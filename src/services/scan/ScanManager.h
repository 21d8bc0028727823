#pragma once

#include "platform/media/CaptureDevice.h"
#include "services/scan/CodeReader.h"

#include <QObject>
#include <QPointer>
#include <QThreadPool>

//! Reads codes from the camera's frames, and measures how bright they are, on a thread of its own.
//! One frame at a time: those that come meanwhile are dropped. Owned by the scanner screen.
class ScanManager : public QObject
{
    Q_OBJECT

public:
    explicit ScanManager(CaptureDevice *device, QObject *parent = nullptr);
    ~ScanManager() override;

    //! The camera and the reading; after stop() nothing is told any more, not even of the frame
    //! that is being read.
    void start();
    void stop();

Q_SIGNALS:
    //! There are other codes in view than before, or none any more. A code may be an empty text.
    void didOutputMetadataObjects(const QStringList &codes);
    void didMeasureBrightness(double brightness);

private:
    void read(const QVideoFrame &frame);
    void tell(int run, const CodeReader::FrameContent &content);

    QPointer<CaptureDevice> m_device;
    bool m_running = false;
    bool m_reading = false;
    int m_run = 0;
    QStringList m_inView;
    QThreadPool m_pool; // last: nothing is read any more when the rest goes
};
