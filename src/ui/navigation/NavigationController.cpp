#include "ui/navigation/NavigationController.h"

#include "ui/navigation/Navigator.h"

using Animation = PresentedScreen::Animation;

NavigationController::NavigationController(
    Navigator *navigator, const QString &rootName, ViewController *root, QObject *parent)
    : ViewController(parent)
    , m_navigator(navigator)
{
    navigator->registerScreen(QString::fromLatin1(screenName),
        QUrl(QStringLiteral("qrc:/qt/qml/Vant/Ui/NavigationView.qml")));
    connect(&m_screens, &ScreenStack::removed, this, &NavigationController::topChanged);
    add(rootName, root);
}

NavigationController::~NavigationController()
{
    // The first one is its owner's.
    m_screens.end(1);
}

NavigationController *NavigationController::of(const ViewController *controller)
{
    return qobject_cast<NavigationController *>(controller->container());
}

void NavigationController::push(const QString &name, ViewController *controller)
{
    const PresentedScreen *lower = top();
    PresentedScreen *screen = add(name, controller);
    if (!screen)
        return;
    connect(screen, &PresentedScreen::didAppear, this, [this, screen] {
        for (int row = m_screens.rowOf(screen) - 1; row >= 0; --row)
            m_screens.at(row)->setCovered(true);
    });
    connect(screen, &PresentedScreen::didDisappear, this, [this, screen] {
        ViewController *gone = screen->controller();
        m_screens.remove(screen);
        if (gone && !gone->parent())
            gone->deleteLater();
    });
    // Before this whole has been on screen, the topmost one comes with it.
    if (lower && lower->isPresent())
        screen->appear(m_navigator->animated() ? Animation::On : Animation::Off);
    Q_EMIT topChanged();
}

void NavigationController::pop()
{
    PresentedScreen *leaving = top();
    const int row = m_screens.rowOf(leaving);
    if (row < 1)
        return;
    PresentedScreen *revealed = m_screens.at(row - 1);
    connect(leaving, &PresentedScreen::didDisappear, revealed, &PresentedScreen::hostDidAppear);
    revealed->setCovered(false);
    if (leaving->isPresent())
        revealed->hostWillAppear();
    leaving->disappear(m_navigator->animated() ? Animation::On : Animation::Off);
    Q_EMIT topChanged();
}

void NavigationController::popToRoot()
{
    // Only the topmost is seen going; what lies between goes unseen behind it.
    for (int row = m_screens.rowOf(top()) - 1; row > 0; --row)
        m_screens.at(row)->disappear(Animation::Off);
    pop();
}

bool NavigationController::contains(const ViewController *controller) const
{
    for (int row = 0; row < m_screens.count(); ++row) {
        if (m_screens.at(row)->controller() == controller)
            return true;
    }
    return false;
}

ViewController *NavigationController::topViewController() const
{
    const PresentedScreen *screen = top();
    return screen ? screen->controller() : nullptr;
}

bool NavigationController::navigationBarHidden() const
{
    const ViewController *controller = topViewController();
    return controller && controller->prefersNavigationBarHidden();
}

bool NavigationController::backVisible() const
{
    return m_screens.rowOf(top()) > 0 || m_navigator->rootViewController() != this;
}

void NavigationController::backPressed()
{
    if (m_screens.rowOf(top()) > 0)
        pop();
    else
        m_navigator->dismiss(this);
}

void NavigationController::viewWillAppear()
{
    Q_EMIT topChanged();
    if (PresentedScreen *screen = top())
        screen->hostWillAppear();
}

void NavigationController::viewDidAppear()
{
    if (PresentedScreen *screen = top())
        screen->hostDidAppear();
}

bool NavigationController::handleBack()
{
    const PresentedScreen *screen = top();
    if (screen && screen->controller() && screen->controller()->handleBack())
        return true;
    if (m_screens.rowOf(screen) < 1)
        return false;
    pop();
    return true;
}

PresentedScreen *NavigationController::top() const
{
    for (int row = m_screens.count() - 1; row >= 0; --row) {
        if (m_screens.at(row)->phase() != PresentedScreen::Phase::Disappearing)
            return m_screens.at(row);
    }
    return nullptr;
}

PresentedScreen *NavigationController::add(const QString &name, ViewController *controller)
{
    const QUrl source = m_navigator->screenSource(name);
    if (source.isEmpty() || !controller || contains(controller))
        return nullptr;
    adopt(controller);
    return m_screens.insert(m_screens.count(),
        std::make_unique<PresentedScreen>(
            name, source, controller, PresentedScreen::Transition::SlideLeft));
}
