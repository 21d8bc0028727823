#include "app/parts/Window.h"

#include "launch/ad/LaunchAd.h"
#include "platform/desktop/WindowOrientation.h"
#include "ui/theme/FontChooser.h"

#include <QGuiApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

//! Of the window on a desktop, in points.
constexpr QSize windowSize {390, 844};

}

Window::Window(MainQueue &mainQueue)
    : m_shell(mainQueue)
{
}

Window::~Window()
{
    close();
}

QQuickWindow *Window::make(const QString &title, LaunchAd *launchAd)
{
    FontChooser::apply();
    m_engine = std::make_unique<QQmlApplicationEngine>();
    // Later versions of the toolkit look there by themselves.
    m_engine->addImportPath(u"qrc:/qt/qml"_s);
    m_engine->setInitialProperties({{u"shell"_s, QVariant::fromValue(&m_shell)},
        {u"title"_s, title}, {u"width"_s, windowSize.width()}, {u"height"_s, windowSize.height()},
        {u"launchAd"_s, QVariant::fromValue(launchAd)}});
    m_engine->load(QUrl(u"qrc:/qt/qml/Vant/App/Main.qml"_s));
    if (m_engine->rootObjects().isEmpty())
        qFatal("the window could not be made");
    m_window = qobject_cast<QQuickWindow *>(m_engine->rootObjects().constFirst());
    return m_window;
}

void Window::activate()
{
    if (!m_window)
        return;
    m_window->raise();
    m_window->requestActivate();
}

void Window::close()
{
    m_window = nullptr;
    m_engine.reset();
    m_shell.navigator()->end();
}

QSize Window::screenPixels()
{
    const QScreen *screen = qGuiApp->primaryScreen();
    const QSize pixels = screen->size() * screen->devicePixelRatio();
    return pixels.width() > pixels.height() ? pixels.transposed() : pixels;
}

QSize Window::windowPixels()
{
    const QScreen *screen = qGuiApp->primaryScreen();
    const bool isPhone = screen->size().height() > screen->size().width();
    return (isPhone ? screen->size() : windowSize) * screen->devicePixelRatio();
}

QString Window::turn(Qt::ScreenOrientation orientation)
{
    return m_window ? WindowOrientation::request(m_window, orientation) : QString();
}
