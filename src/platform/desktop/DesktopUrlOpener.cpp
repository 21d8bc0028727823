#include "platform/desktop/DesktopUrlOpener.h"

#include "platform/Logging.h"

#include <QUrl>

#include <memory>

// The library's headers use a word that Qt has made a macro.
#undef signals
#include <gio/gio.h>

bool DesktopUrlOpener::canOpenURL(const QUrl &url) const
{
    if (url.scheme().isEmpty())
        return false;
    const std::unique_ptr<GAppInfo, decltype(&g_object_unref)> handler(
        g_app_info_get_default_for_uri_scheme(url.scheme().toUtf8().constData()), &g_object_unref);
    return handler != nullptr;
}

bool DesktopUrlOpener::openURL(const QUrl &url)
{
    GError *error = nullptr;
    if (g_app_info_launch_default_for_uri(url.toEncoded().constData(), nullptr, &error))
        return true;
    qCWarning(lcPlatform) << "no program took the address:" << error->message;
    g_error_free(error);
    return false;
}
