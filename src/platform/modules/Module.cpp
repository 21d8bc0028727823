#include "platform/modules/Module.h"

#include "platform/Logging.h"

#include <QCoreApplication>
#include <QPluginLoader>

using namespace Qt::StringLiterals;

const QObject *Module::root(const char *name)
{
    QPluginLoader loader(QCoreApplication::applicationDirPath() + u"/" VANT_MODULE_FOLDER "/"_s
        + QLatin1StringView(name));
    const QObject *root = loader.instance();
    if (!root)
        qCWarning(lcPlatform) << "a module is missing:" << loader.errorString();
    return root;
}
