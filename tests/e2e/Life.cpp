#include "e2e/Life.h"

#include "app/parts/StudentApplication.h"
#include "app/start/ApplicationSetup.h"
#include "app/start/ConfigurationFile.h"
#include "app/start/RunningInstance.h"
#include "e2e/driver/Driver.h"
#include "e2e/driver/Patience.h"
#include "e2e/driver/StepFailed.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int activeTimeoutMs = 10'000;

}

Life::Life(const TourOptions &options)
    : m_options(options)
    , m_report(options.out)
{
}

int Life::run(int argc, char **argv)
{
    ApplicationSetup::keepFilesPrivate();
    ApplicationSetup::beforeApplication();
    QGuiApplication application(argc, argv);
    ApplicationSetup::afterApplication();

    try {
        Wire wire(m_options.life->platform);
        auto deployment = std::get<DeploymentConfiguration>(
            ConfigurationFile::parse(wire.get(u"/deployment.toml"_s), u"deployment.toml"_s));
        const Journey::Start &start = m_journey.startOf(m_options.life->number);
        if (start.prepare)
            start.prepare(wire);
        if (start.configure)
            start.configure(deployment);
        return live(wire, deployment);
    } catch (const StepFailed &failure) {
        std::fprintf(stderr, "vant-tour: %s\n", qUtf8Printable(failure.reason));
        return EXIT_FAILURE;
    }
}

int Life::live(Wire &wire, const DeploymentConfiguration &deployment)
{
    const QString profile = m_options.life->profile;
    const ProfilePaths paths(profile);
    StudentApplication student(deployment, paths, profile + u'/' + cameraFeed);
    RunningInstance instance(paths.data);
    instance.handOver({}, {});
    student.start({});
    student.listenTo(&instance);
    student.window()->resize(m_options.size);
    Driver driver(student.window(), &wire, m_options.life->profile);
    QTimer::singleShot(0, qGuiApp, [&] {
        if (Patience::waitUntil([&] { return driver.window()->isActive(); }, activeTimeoutMs))
            goThrough(driver);
        // Its last window closed, a program ends.
        driver.window()->close();
    });
    return QGuiApplication::exec();
}

void Life::goThrough(Driver &driver)
{
    for (const Step &step : m_journey.stepsOf(m_options.life->number, m_options.only)) {
        const bool canBeTried = m_report.outcomes().value(step.need, true);
        m_report.add(canBeTried ? take(step, driver)
                                : StepResult {step.name, false, 0, {},
                                    u"not tried, for %1 failed"_s.arg(step.need)});
    }
}

StepResult Life::take(const Step &step, Driver &driver)
{
    StepResult result;
    result.step = step.name;
    QElapsedTimer timer;
    timer.start();
    Picture picture;
    const QString name = m_journey.pictureName(step);
    try {
        // There will be no other moment.
        if (step.endsProgram)
            driver.takePicture().save(m_options.out + u'/' + name);
        step.act(driver);
        picture = driver.takePicture();
        result.ok = !step.endsProgram;
        result.detail = result.ok ? driver.takeNotes() : u"the program goes on"_s;
    } catch (const StepFailed &failed) {
        picture = driver.dropStep();
        result.detail = failed.reason;
    }
    result.ms = timer.elapsed();
    if (picture.save(m_options.out + u'/' + name))
        result.screenshot = name;
    else
        result.ok = false;
    return result;
}
