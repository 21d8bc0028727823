#include "web/engine/EngineSetup.h"

#include <QByteArray>
#include <QNetworkProxyFactory>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

namespace {

constexpr auto flagsVariable = "QTWEBENGINE_CHROMIUM_FLAGS";
// The engine does not survive a page's showOpenFilePicker() and its like.
constexpr auto deadlyFeature = "FileSystemAccess";
// To the engine no page is in a window of its own, so none could ask to be closed.
constexpr auto closing = "allowScriptsToCloseWindows=true";

// Of several such flags the engine takes the last alone.
QByteArray withListed(const QByteArray &flags, const QByteArray &flag, const QByteArray &value)
{
    const qsizetype at = flags.lastIndexOf(flag);
    if (at < 0)
        return flags + ' ' + flag + value;
    return QByteArray(flags).insert(at + flag.size(), value + ',');
}

}

void EngineSetup::beforeApplication()
{
    const QByteArray flags
        = withListed(qgetenv(flagsVariable), "--disable-blink-features=", deadlyFeature);
    qputenv(flagsVariable, withListed(flags, "--blink-settings=", closing));
    // Whether it is so by itself is a matter of how the toolkit was built.
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    QtWebEngineQuick::initialize();
}
