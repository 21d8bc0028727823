#pragma once

#include "launch/ad/LaunchAdConfiguration.h"
#include "launch/ad/LaunchAdPicture.h"

#include <QPointF>
#include <QSize>

class LaunchAdDelegate;
class HTTPNetwork;

//! The advertisement over the first screen of a launch, used once: it waits under the launch
//! picture, shows its picture with a countdown, fades, and is gone. Nothing, late, or damaged
//! pictures go from waiting to gone at once. Owned by VANTSplashAdManager, drawn by LaunchAdView.
//!
//!   Idle -> Waiting -> Showing -> Leaving -> Gone
//!              +----------------------------^
class LaunchAd : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Advertisements are made in C++.")
    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(bool coversWindow READ coversWindow NOTIFY phaseChanged)
    Q_PROPERTY(QString skipText READ skipText NOTIFY skipTextChanged)
    Q_PROPERTY(LaunchAdPicture *picture READ picture CONSTANT)
    Q_PROPERTY(int finishAnimateMs READ finishAnimateMs NOTIFY phaseChanged)

public:
    enum class Phase { Idle, Waiting, Showing, Leaving, Gone };
    Q_ENUM(Phase)

    //! \a area: the pixels of the screen. Pictures are kept in the network's cache.
    LaunchAd(
        LaunchAdDelegate *delegate, HTTPNetwork *network, MainQueue *mainQueue, const QSize &area);

    //! Covers the window from now on, for that long at most unless a picture can be shown by then.
    void setWaitDataDuration(std::chrono::milliseconds duration);
    //! Loads the picture and shows it; one that comes too late is kept for the next launch only.
    void imageAdWithImageAdConfiguration(const LaunchAdConfiguration &configuration);

    Phase phase() const { return m_phase; }
    //! From the launch picture under which it waits to the end of its fade.
    bool coversWindow() const { return m_phase != Phase::Idle && m_phase != Phase::Gone; }
    //! What the skip button says: the seconds that are left.
    QString skipText() const;
    LaunchAdPicture *picture() { return &m_picture; }
    int finishAnimateMs() const { return int(m_configuration.showFinishAnimateTime.count()); }

    // The view's touches.
    Q_INVOKABLE void skip();
    Q_INVOKABLE void click(QPointF point);

Q_SIGNALS:
    void phaseChanged();
    void skipTextChanged();

private:
    void decode(const QString &address, const QByteArray &encoded);
    void show();
    void countDown();
    void leave();
    void finish();
    void setPhase(Phase phase);

    LaunchAdDelegate *m_delegate;
    HTTPNetwork *m_network;
    MainQueue *m_mainQueue;
    QSize m_area;
    LaunchAdPicture m_picture;
    LaunchAdConfiguration m_configuration;
    Phase m_phase = Phase::Idle;
    std::chrono::seconds m_left {0};
};
