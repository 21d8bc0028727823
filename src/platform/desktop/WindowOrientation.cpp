#include "platform/desktop/WindowOrientation.h"

#include <QGuiApplication>
#include <QWindow>

QString WindowOrientation::request(QWindow *window, Qt::ScreenOrientation orientation)
{
    // The toolkit would declare the window's picture turned, and the compositor turn it back; the
    // screen stays as it is.
    if (QGuiApplication::platformName().startsWith(QStringLiteral("wayland")))
        return QStringLiteral("the compositor turns the screen for nobody");
    window->reportContentOrientationChange(orientation);
    return {};
}
