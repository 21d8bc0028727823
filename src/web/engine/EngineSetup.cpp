#include "web/engine/EngineSetup.h"

#include <QByteArray>
#include <QNetworkProxyFactory>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

namespace {

constexpr auto flagsVariable = "QTWEBENGINE_CHROMIUM_FLAGS";
constexpr auto featuresFlag = "--disable-blink-features=";
// The engine does not survive a page's showOpenFilePicker() and its like.
constexpr auto deadlyFeature = "FileSystemAccess";

// Of several such flags the engine takes the last alone.
QByteArray withoutDeadlyFeature(const QByteArray &flags)
{
    const qsizetype at = flags.lastIndexOf(featuresFlag);
    if (at < 0)
        return flags + ' ' + featuresFlag + deadlyFeature;
    return QByteArray(flags).insert(
        at + qsizetype(qstrlen(featuresFlag)), QByteArray(deadlyFeature) + ',');
}

}

void EngineSetup::beforeApplication()
{
    qputenv(flagsVariable, withoutDeadlyFeature(qgetenv(flagsVariable)));
    // Whether it is so by itself is a matter of how the toolkit was built.
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    QtWebEngineQuick::initialize();
}
