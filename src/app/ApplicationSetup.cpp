#include "app/ApplicationSetup.h"

#include "platform/BoundedImage.h"

#include <QGuiApplication>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// The engine refuses to start sandboxed as root, and only then it is allowed not to.
void dropEngineSandboxForRoot()
{
    if (::geteuid() != 0 || qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        return;
    std::fputs("vant-student: running as root, the web engine's own sandbox is off\n", stderr);
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

}

void ApplicationSetup::beforeApplication()
{
    ::umask(S_IRWXG | S_IRWXO);
    dropEngineSandboxForRoot();
    BoundedImage::limitToolkit();
    QtWebEngineQuick::initialize();
}

void ApplicationSetup::afterApplication()
{
    QCoreApplication::setApplicationName(u"vant-student"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(version));
    QGuiApplication::setDesktopFileName(u"vant-student"_s);
}
