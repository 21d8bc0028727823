#include "ui/navigation/Navigator.h"

#include "ui/Logging.h"

#include <algorithm>
#include <utility>

using Animation = PresentedScreen::Animation;
using Phase = PresentedScreen::Phase;

Navigator::Navigator(QObject *parent)
    : QObject(parent)
{
    connect(&m_screens, &ScreenStack::removed, this, [this](PresentedScreen *screen, int row) {
        if (row < m_rootCount)
            --m_rootCount;
        if (screen == m_root) {
            m_root = nullptr;
            Q_EMIT rootChanged();
        }
        updateCovered();
    });
}

Navigator::~Navigator()
{
    end();
}

void Navigator::end()
{
    m_screens.end(m_rootCount);
}

void Navigator::registerScreen(const QString &name, const QUrl &qml)
{
    m_sources.insert(name, qml);
}

QUrl Navigator::screenSource(const QString &name) const
{
    const QUrl source = m_sources.value(name);
    if (source.isEmpty())
        qCWarning(lcUi) << "no screen is registered under the name" << name;
    return source;
}

void Navigator::setAnimated(bool animated)
{
    if (m_animated == animated)
        return;
    m_animated = animated;
    Q_EMIT animatedChanged();
}

void Navigator::setRootViewController(const QString &name, ViewController *controller)
{
    PresentedScreen *next = name.isEmpty() ? nullptr : makeRoot(name, controller);
    if (next == m_root)
        return;

    PresentedScreen *former = std::exchange(m_root, next);
    for (PresentedScreen *modal : presentModals()) {
        if (!modal->controller() || !modal->controller()->staysOverRoots())
            modal->disappear(Animation::Off);
    }
    if (former)
        former->disappear(Animation::Off);
    if (next)
        next->appear(Animation::Off);
    updateCovered();
    Q_EMIT rootChanged();
}

void Navigator::prepare(const QString &name, ViewController *controller)
{
    makeRoot(name, controller);
}

QString Navigator::rootName() const
{
    return m_root ? m_root->name() : QString();
}

ViewController *Navigator::rootViewController() const
{
    return m_root ? m_root->controller() : nullptr;
}

bool Navigator::present(const QString &name, ViewController *controller)
{
    return presentAt(m_screens.count(), name, controller);
}

bool Navigator::presentOverRoot(const QString &name, ViewController *controller)
{
    return presentAt(m_rootCount, name, controller);
}

bool Navigator::presentAt(int row, const QString &name, ViewController *controller)
{
    const QUrl source = screenSource(name);
    if (source.isEmpty() || !controller || m_screens.find(name, controller))
        return false;
    PresentedScreen *modal = m_screens.insert(row,
        std::make_unique<PresentedScreen>(
            name, source, controller, PresentedScreen::Transition::SlideUp));
    connect(modal, &PresentedScreen::didAppear, this, &Navigator::updateCovered);
    connect(modal, &PresentedScreen::didDisappear, this, [this, modal] { removeModal(modal); });
    modal->appear(modal->isOverlay() ? Animation::Off : animation());
    Q_EMIT presented(name);
    return true;
}

void Navigator::dismiss(ViewController *controller)
{
    const auto modals = presentModals();
    const auto first = std::find_if(modals.begin(), modals.end(), [controller](const auto *modal) {
        return modal->controller() == controller
            || (modal->controller() && modal->controller()->contains(controller));
    });
    if (first == modals.end())
        return;

    PresentedScreen *revealed = first == modals.begin() ? m_root : *(first - 1);
    // Only the topmost is seen going; what lies between goes unseen behind it.
    for (auto it = first; it + 1 != modals.end(); ++it)
        (*it)->disappear(Animation::Off);
    PresentedScreen *last = modals.back();
    const bool hidMore
        = std::any_of(first, modals.end(), [](const auto *modal) { return !modal->isOverlay(); });
    if (revealed && hidMore) {
        connect(last, &PresentedScreen::didDisappear, revealed, &PresentedScreen::hostDidAppear);
        revealed->setCovered(false);
        revealed->hostWillAppear();
    }
    last->disappear(last->isOverlay() ? Animation::Off : animation());
}

bool Navigator::isPresenting(const ViewController *controller) const
{
    const auto modals = presentModals();
    return std::any_of(modals.begin(), modals.end(),
        [controller](const auto *modal) { return modal->controller() == controller; });
}

ViewController *Navigator::topViewController() const
{
    const auto modals = presentModals();
    return modals.empty() ? rootViewController() : modals.back()->controller();
}

bool Navigator::back()
{
    ViewController *top = topViewController();
    if (!top)
        return false;
    if (top->handleBack())
        return true;
    if (presentModals().empty())
        return false;
    dismiss(top);
    return true;
}

PresentedScreen *Navigator::makeRoot(const QString &name, ViewController *controller)
{
    if (PresentedScreen *kept = m_screens.find(name, controller))
        return kept;
    const QUrl source = screenSource(name);
    if (source.isEmpty() || !controller)
        return nullptr;
    return m_screens.insert(m_rootCount++,
        std::make_unique<PresentedScreen>(
            name, source, controller, PresentedScreen::Transition::SlideUp));
}

std::vector<PresentedScreen *> Navigator::presentModals() const
{
    std::vector<PresentedScreen *> modals;
    for (int row = m_rootCount; row < m_screens.count(); ++row) {
        if (m_screens.at(row)->isPresent())
            modals.push_back(m_screens.at(row));
    }
    return modals;
}

void Navigator::removeModal(PresentedScreen *modal)
{
    ViewController *controller = modal->controller();
    m_screens.remove(modal);
    Q_EMIT dismissed(controller);
    if (controller && !controller->parent())
        controller->deleteLater();
}

void Navigator::updateCovered()
{
    bool covered = false;
    bool behind = false;
    for (int row = m_screens.count() - 1; row >= 0; --row) {
        PresentedScreen *screen = m_screens.at(row);
        screen->setCovered(covered);
        screen->setBehind(behind);
        behind = behind || screen->phase() == Phase::Shown;
        covered = covered || (screen->phase() == Phase::Shown && !screen->isOverlay());
    }
}

Animation Navigator::animation() const
{
    return m_animated ? Animation::On : Animation::Off;
}
