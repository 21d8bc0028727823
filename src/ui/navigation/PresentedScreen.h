#pragma once

#include "ui/navigation/ViewController.h"

#include <QPointer>
#include <QUrl>

//! One screen on a stack: a controller, the address of its view, and where it is on its way in or
//! out. Owned by its ScreenStack. The view (ScreenView.qml) reports when it is made and when a
//! transition has ended; the controller is told of its appearances from here alone.
class PresentedScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by the navigator.")
    Q_PROPERTY(QUrl source READ source CONSTANT)
    Q_PROPERTY(ViewController *controller READ controller CONSTANT)
    Q_PROPERTY(Transition transition READ transition CONSTANT)
    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(bool animated READ animated NOTIFY phaseChanged)
    Q_PROPERTY(bool covered READ covered NOTIFY coveredChanged)
    Q_PROPERTY(bool behind READ behind NOTIFY coveredChanged)

public:
    enum class Phase { Hidden, Appearing, Shown, Disappearing };
    Q_ENUM(Phase)
    enum class Transition { SlideUp, SlideLeft };
    Q_ENUM(Transition)
    enum class Animation { Off, On };

    PresentedScreen(
        const QString &name, const QUrl &source, ViewController *controller, Transition transition);

    QString name() const { return m_name; }
    QUrl source() const { return m_source; }
    ViewController *controller() const { return m_controller; }
    Transition transition() const { return m_transition; }
    Phase phase() const { return m_phase; }
    bool animated() const { return m_animated; }
    //! Another screen hides this one completely.
    bool covered() const { return m_covered; }
    //! Another screen takes the input, whether or not this one can still be seen.
    bool behind() const { return m_behind; }
    bool isOverlay() const { return m_controller && m_controller->isOverlay(); }
    //! On screen or on its way there.
    bool isPresent() const
    {
        return m_wanted || m_phase == Phase::Appearing || m_phase == Phase::Shown;
    }

    //! Brings the screen in as soon as its view is made. Nothing when it is present already.
    void appear(Animation animation);
    //! Takes the screen off; ends in didDisappear.
    void disappear(Animation animation);
    void setCovered(bool covered);
    void setBehind(bool behind);
    //! What holds or covers this screen begins to give it free, and has given it free: an
    //! appearance without a transition of its own.
    void hostWillAppear();
    void hostDidAppear();

    //! For the view: it has been made, or the transition it ran has ended.
    Q_INVOKABLE void viewLoaded();
    Q_INVOKABLE void transitionFinished();

Q_SIGNALS:
    void phaseChanged();
    void coveredChanged();
    //! Fully on screen.
    void didAppear();
    //! Fully off screen.
    void didDisappear();

private:
    void beginAppearance();
    void endAppearance();
    void setPhase(Phase phase);

    QString m_name;
    QUrl m_source;
    QPointer<ViewController> m_controller;
    Transition m_transition;
    Phase m_phase = Phase::Hidden;
    bool m_animated = false;
    bool m_covered = false;
    bool m_behind = false;
    bool m_loaded = false;
    bool m_didLoad = false;
    bool m_wanted = false;
};
