#pragma once

#include "launch/ad/LaunchAd.h"
#include "launch/ad/LaunchAdDelegate.h"

class NotificationCenter;
class QJsonValue;
class RequestInterface;

//! Brings the platform's advertisement to the launch, one attempt a process. One for the process,
//! made by the application. Posts "xhLaunchAdShowFinish" once when the window is free, whether or
//! not there was an advertisement.
class VANTSplashAdManager : public QObject, public LaunchAdDelegate
{
    Q_OBJECT

public:
    //! \a screenPixels: the size of the screen, portrait, in pixels.
    VANTSplashAdManager(RequestInterface *requests, HTTPNetwork *network, MainQueue *mainQueue,
        NotificationCenter *notifications, const QSize &screenPixels);

    //! The launch has finished: the advertisement's turn.
    void setupXHLaunchAd();
    void networkLaunchAd();
    //! Shows a picture of the application's own; no launch does so at present.
    void localLaunchAd();

    bool xhLaunchAd(const QString &openModel, QPointF clickPoint) override;
    void xhLaunchAdShowFinish() override;

    LaunchAd *launchAd() { return &m_launchAd; }
    //! Whether the window is covered: messages wait for "xhLaunchAdShowFinish".
    bool isShowing() const { return m_launchAd.coversWindow(); }

private:
    void didAnswer(const QJsonValue &data);

    RequestInterface *m_requests;
    NotificationCenter *m_notifications;
    QSize m_screenPixels;
    LaunchAd m_launchAd;
};
