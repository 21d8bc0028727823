#include "app/start/ApplicationSetup.h"

#include "platform/media/BoundedImage.h"
#include "web/engine/EngineSetup.h"

#include <QGuiApplication>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

void ApplicationSetup::keepFilesPrivate()
{
    ::umask(S_IRWXG | S_IRWXO);
}

QString ApplicationSetup::engineProblem()
{
    if (::geteuid() != 0 || qEnvironmentVariableIsSet(withoutSandbox))
        return {};
    return u"the web engine does not keep pages apart from the system for root: start it as an "
           "ordinary user, or, for a trial, with %1=1"_s.arg(QLatin1StringView(withoutSandbox));
}

void ApplicationSetup::beforeApplication()
{
    BoundedImage::limitToolkit();
    EngineSetup::beforeApplication();
}

void ApplicationSetup::afterApplication()
{
    QCoreApplication::setApplicationName(u"vant-student"_s);
    QCoreApplication::setApplicationVersion(QString::fromLatin1(version));
    QGuiApplication::setDesktopFileName(u"vant-student"_s);
}
