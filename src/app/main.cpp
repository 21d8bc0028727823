#include "app/ApplicationSetup.h"
#include "app/CommandLine.h"
#include "app/ConfigurationFile.h"
#include "app/RunningInstance.h"
#include "app/SandboxProcess.h"
#include "app/StudentApplication.h"
#include "platform/ServerTrust.h"

#include <QDir>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)
Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)
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

// The defaults, the sandbox's own over them, the operator's file over both.
std::variant<DeploymentConfiguration, QString> configurationFor(
    const CommandLine &line, SandboxProcess &sandbox)
{
    std::variant<DeploymentConfiguration, QString> configuration;
    if (line.sandbox)
        configuration = sandbox.start();
    if (line.configFile.isNull() || std::holds_alternative<QString>(configuration))
        return configuration;
    return ConfigurationFile::read(
        line.configFile, std::get<DeploymentConfiguration>(configuration));
}

}

int main(int argc, char *argv[])
{
    // First of all, so that a wrong start says so without a display too.
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

    ApplicationSetup::beforeApplication();
    QGuiApplication application(argc, argv);
    ApplicationSetup::afterApplication();

    if (!line.profile.isNull() && (line.profile.isEmpty() || !QDir().mkpath(line.profile)))
        return refuse(u"--profile: the folder \"%1\" cannot be made"_s.arg(line.profile));
    const ProfilePaths paths(line.profile);
    RunningInstance instance(paths.instanceSocket);
    if (instance.handOver(line.push, line.url))
        return 0;

    SandboxProcess sandbox;
    const auto configuration = configurationFor(line, sandbox);
    if (const auto *problem = std::get_if<QString>(&configuration))
        return refuse(*problem);
    const auto &deployment = std::get<DeploymentConfiguration>(configuration);
    if (!deployment.extraCaFile.isEmpty()) {
        if (const QString problem = ServerTrust::addAuthorities(deployment.extraCaFile);
            !problem.isNull())
            return refuse(problem);
    }

    StudentApplication student(deployment, paths);
    QObject::connect(&instance, &RunningInstance::pushReceived, &student,
        &StudentApplication::receivePush);
    QObject::connect(
        &instance, &RunningInstance::urlReceived, &student, &StudentApplication::receiveUrl);
    QObject::connect(
        &instance, &RunningInstance::activated, &student, &StudentApplication::activate);
    student.start(line.push);
    if (!line.url.isEmpty())
        student.receiveUrl(line.url);
    return application.exec();
}
