#include "app/parts/StudentApplication.h"
#include "app/start/ApplicationSetup.h"
#include "app/start/CommandLine.h"
#include "app/start/ConfigurationFile.h"
#include "app/start/RunningInstance.h"
#include "app/start/SandboxProcess.h"
#include "platform/transport/ServerTrust.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)
Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)
Q_IMPORT_QML_PLUGIN(Vant_UploadPlugin)
Q_IMPORT_QML_PLUGIN(Vant_LaunchPlugin)
Q_IMPORT_QML_PLUGIN(Vant_ServicesPlugin)
Q_IMPORT_QML_PLUGIN(Vant_WebPlugin)
Q_IMPORT_QML_PLUGIN(Vant_AppPlugin)

using namespace Qt::StringLiterals;

namespace {

constexpr int badStart = 2;

int refuse(const QString &problem)
{
    std::fprintf(stderr, "vant-student: %s\n", qUtf8Printable(problem));
    return badStart;
}

using Configuration = std::variant<DeploymentConfiguration, QString>;

// The operator's keys over the base; the base where there is no file of the operator's.
Configuration over(
    const DeploymentConfiguration &base, const CommandLine &line, const QByteArray &text)
{
    return line.configFile.isNull() ? base : ConfigurationFile::parse(text, line.configFile, base);
}

// Once, for it may be replaced at any time.
std::variant<QByteArray, QString> operatorsText(const CommandLine &line)
{
    if (line.configFile.isNull())
        return QByteArray();
    return ConfigurationFile::read(line.configFile);
}

}

int main(int argc, char *argv[])
{
    ApplicationSetup::keepFilesPrivate();
    // Before all else, so that a wrong start says so without a display too.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const auto parsed = CommandLine::parse(arguments);
    if (const auto *problem = std::get_if<QString>(&parsed))
        return refuse(*problem);
    const CommandLine &line = std::get<CommandLine>(parsed);
    if (line.version) {
        std::printf("vant-student %s\n", ApplicationSetup::version);
        return 0;
    }

    if (const QString problem = ApplicationSetup::engineProblem(); !problem.isNull())
        return refuse(problem);
    if (!line.profile.isNull() && (line.profile.isEmpty() || !QDir().mkpath(line.profile)))
        return refuse(u"--profile: the folder \"%1\" cannot be made"_s.arg(line.profile));
    const auto text = operatorsText(line);
    if (const auto *problem = std::get_if<QString>(&text))
        return refuse(*problem);
    Configuration configuration = over({}, line, std::get<QByteArray>(text));
    if (const auto *problem = std::get_if<QString>(&configuration))
        return refuse(*problem);

    ApplicationSetup::beforeApplication();
    QGuiApplication application(argc, argv);
    ApplicationSetup::afterApplication();
    const ProfilePaths paths(line.profile);
    if (!paths.qmlCache.isNull())
        qputenv("QML_DISK_CACHE_PATH", QFile::encodeName(paths.qmlCache));
    RunningInstance instance(paths.data);
    switch (instance.handOver(line.push, line.url)) {
    case RunningInstance::Outcome::First:
        break;
    case RunningInstance::Outcome::HandedOver:
        return 0;
    case RunningInstance::Outcome::InUse:
        return refuse(
            u"the profile \"%1\" is in use by a client that cannot be reached"_s.arg(paths.data));
    }

    SandboxProcess sandbox;
    if (line.sandbox) {
        const Configuration base = sandbox.start();
        configuration = std::holds_alternative<QString>(base)
            ? base
            : over(std::get<DeploymentConfiguration>(base), line, std::get<QByteArray>(text));
    }
    if (const auto *problem = std::get_if<QString>(&configuration))
        return refuse(*problem);
    const auto &deployment = std::get<DeploymentConfiguration>(configuration);
    if (!deployment.extraCaFile.isEmpty()) {
        if (const QString problem = ServerTrust::addAuthorities(deployment.extraCaFile);
            !problem.isNull())
            return refuse(problem);
    }

    StudentApplication student(deployment, paths, line.cameraFeed);
    student.start(line.push);
    student.listenTo(&instance);
    if (!line.url.isEmpty())
        student.receiveUrl(line.url);
    return application.exec();
}
