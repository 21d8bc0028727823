#include "ui/navigation/PresentedScreen.h"

#include <utility>

PresentedScreen::PresentedScreen(
    const QString &name, const QUrl &source, ViewController *controller, Transition transition)
    : m_name(name)
    , m_source(source)
    , m_controller(controller)
    , m_transition(transition)
{
}

void PresentedScreen::appear(Animation animation)
{
    if (isPresent())
        return;
    m_wanted = true;
    m_animated = animation == Animation::On;
    if (!m_loaded)
        return;
    beginAppearance();
    if (!m_animated)
        endAppearance();
}

void PresentedScreen::disappear(Animation animation)
{
    m_wanted = false;
    m_animated = animation == Animation::On && m_phase != Phase::Hidden;
    setPhase(Phase::Disappearing);
    if (!m_animated)
        transitionFinished();
}

void PresentedScreen::setCovered(bool covered)
{
    if (m_covered == covered)
        return;
    m_covered = covered;
    Q_EMIT coveredChanged();
}

void PresentedScreen::setBehind(bool behind)
{
    if (m_behind == behind)
        return;
    m_behind = behind;
    Q_EMIT coveredChanged();
}

void PresentedScreen::hostWillAppear()
{
    if (m_phase == Phase::Appearing)
        return;
    if (m_phase == Phase::Shown && m_controller) {
        m_controller->viewWillAppear();
        return;
    }
    m_wanted = true;
    m_animated = false;
    if (m_loaded)
        beginAppearance();
}

void PresentedScreen::hostDidAppear()
{
    if (m_phase == Phase::Shown && m_controller)
        m_controller->viewDidAppear();
    else if (m_phase == Phase::Appearing && !m_animated)
        endAppearance();
}

void PresentedScreen::viewLoaded()
{
    if (m_loaded)
        return;
    m_loaded = true;
    if (!m_wanted)
        return;
    beginAppearance();
    if (!m_animated)
        endAppearance();
}

void PresentedScreen::transitionFinished()
{
    if (m_phase == Phase::Appearing) {
        endAppearance();
    } else if (m_phase == Phase::Disappearing) {
        setPhase(Phase::Hidden);
        Q_EMIT didDisappear();
    }
}

void PresentedScreen::beginAppearance()
{
    m_wanted = false;
    // A view made in advance must not begin its screen's work yet.
    if (!std::exchange(m_didLoad, true) && m_controller)
        m_controller->viewDidLoad();
    if (m_controller)
        m_controller->viewWillAppear();
    setPhase(Phase::Appearing);
}

void PresentedScreen::endAppearance()
{
    setPhase(Phase::Shown);
    if (m_controller)
        m_controller->viewDidAppear();
    Q_EMIT didAppear();
}

void PresentedScreen::setPhase(Phase phase)
{
    if (m_phase == phase)
        return;
    m_phase = phase;
    Q_EMIT phaseChanged();
}
