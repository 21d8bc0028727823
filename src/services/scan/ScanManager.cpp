#include "services/scan/ScanManager.h"

#include <QVideoFrame>

#include <utility>

ScanManager::ScanManager(CaptureDevice *device, QObject *parent)
    : QObject(parent)
    , m_device(device)
{
    m_pool.setMaxThreadCount(1);
    connect(device, &CaptureDevice::frameCaptured, this, &ScanManager::read);
}

ScanManager::~ScanManager()
{
    stop();
}

void ScanManager::start()
{
    if (m_running)
        return;
    m_running = true;
    ++m_run;
    m_inView.clear();
    m_device->start();
}

void ScanManager::stop()
{
    // At the end of the program the camera may have gone first.
    if (std::exchange(m_running, false) && m_device)
        m_device->stop();
}

void ScanManager::read(const QVideoFrame &frame)
{
    if (!m_running || m_reading)
        return;
    m_reading = true;
    m_pool.start([this, frame, run = m_run] {
        const CodeReader::FrameContent content = CodeReader::readFrame(frame);
        QMetaObject::invokeMethod(
            this, [this, run, content] { tell(run, content); }, Qt::QueuedConnection);
    });
}

void ScanManager::tell(int run, const CodeReader::FrameContent &content)
{
    m_reading = false;
    if (!m_running || run != m_run)
        return;
    if (std::exchange(m_inView, content.codes) != content.codes)
        Q_EMIT didOutputMetadataObjects(content.codes);
    if (m_running)
        Q_EMIT didMeasureBrightness(content.brightness);
}
