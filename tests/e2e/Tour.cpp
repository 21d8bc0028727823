#include "e2e/Tour.h"

#include "app/start/ApplicationSetup.h"
#include "app/start/SandboxProcess.h"
#include "e2e/driver/Driver.h"
#include "upload/SampleMedia.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int lifeTimeoutMs = 600'000;

void removePicturesOfAnEarlierTour(QDir folder)
{
    const QStringList names
        = folder.entryList({u"[0-9][0-9]-*.png"_s, u"tour.json"_s}, QDir::Files);
    for (const QString &name : names)
        folder.remove(name);
}

// What a person's own session would add to the picture or keep from the tour stays out.
QProcessEnvironment lifeEnvironment(const Desktop &desktop)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto setDefault = [&](const QString &name, const QString &value) {
        if (!environment.contains(name))
            environment.insert(name, value);
    };
    if (!environment.contains(u"DISPLAY"_s) && !environment.contains(u"WAYLAND_DISPLAY"_s))
        setDefault(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    if (environment.value(u"QT_QPA_PLATFORM"_s) == u"offscreen")
        setDefault(u"QT_QUICK_BACKEND"_s, u"software"_s);
    setDefault(u"VANT_SAFE_AREA"_s, u"47,34"_s);
    setDefault(u"QTWEBENGINE_CHROMIUM_FLAGS"_s,
        u"--disable-quic --no-first-run --disable-background-networking --disable-component-update --disable-sync"_s);
    const auto own = desktop.environment();
    for (auto variable = own.begin(); variable != own.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    // The keychain of whoever runs the tour is none of its business.
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"disabled:"_s);
    return environment;
}

// A hill under the sun, in the colours of the season.
QImage landscape(const QSize &size, const QColor &sky, const QColor &hill)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(sky);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xd1, 0x5c));
    painter.drawEllipse(QPoint(size.width() * 3 / 4, size.height() / 4), 90, 90);
    painter.setBrush(hill.lighter(120));
    painter.drawEllipse(QPoint(size.width(), size.height()), size.width(), size.height() / 2);
    painter.setBrush(hill);
    painter.drawEllipse(QPoint(size.width() / 6, size.height()), size.width(), size.height() / 3);
    return image;
}

// The album of whoever travels.
void fillAlbum(const QDir &profile)
{
    profile.mkpath(u"Pictures"_s);
    profile.mkpath(u"Videos"_s);
    SampleMedia::writeHeic(
        profile.filePath(u"Pictures/秋.heic"_s), landscape({1280, 960}, 0xf6e3c5, 0xd9773a));
    landscape({960, 1280}, 0xcfeaff, 0x3dbd80).save(profile.filePath(u"Pictures/春.png"_s));
    SampleMedia::writeClip(profile.filePath(u"Videos/校园.mp4"_s), u"width=960,height=540"_s,
        SampleMedia::Sound::Ticking, 150, u"snow"_s);
    landscape({1280, 720}, 0xb8d4f0, 0x4f9b6d).save(profile.filePath(cameraFeed));
}

}

Tour::Tour(const TourOptions &options)
    : m_options(options)
    , m_report(options.out)
{
}

int Tour::run()
{
    if (!ApplicationSetup::engineProblem().isNull()) {
        std::fputs("vant-tour: running as root, without the web engine's own sandbox\n", stderr);
        qputenv(ApplicationSetup::withoutSandbox, "1");
    }
    QDir().mkpath(m_options.out);
    removePicturesOfAnEarlierTour(QDir(m_options.out));
    QTemporaryDir profile(m_options.out + u"/profile-XXXXXX"_s);
    SandboxProcess sandbox;
    const auto deployment = sandbox.start();
    if (const auto *problem = std::get_if<QString>(&deployment)) {
        std::fprintf(stderr, "vant-tour: %s\n", qUtf8Printable(*problem));
        return EXIT_FAILURE;
    }
    fillAlbum(QDir(profile.path()));
    Desktop(profile.path()).furnish();
    const QUrl platform(std::get<DeploymentConfiguration>(deployment).hosts.rb);

    QElapsedTimer timer;
    timer.start();
    for (int number = 1; number <= m_journey.lives(); ++number)
        live({number, platform, profile.path()});
    const bool allOk = !m_report.outcomes().values().contains(false);
    std::printf("%s in %.1f s, pictures and tour.json in %s\n",
        allOk ? "Every step was seen to hold" : "NOT every step was seen to hold",
        double(timer.elapsed()) / 1000, qUtf8Printable(m_options.out));
    return allOk ? EXIT_SUCCESS : EXIT_FAILURE;
}

void Tour::live(const TourOptions::Life &life)
{
    const QList<Step> steps = m_journey.stepsOf(life.number, m_options.only);
    if (steps.isEmpty())
        return;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setProcessEnvironment(lifeEnvironment(Desktop(life.profile)));
    process.start(QCoreApplication::applicationFilePath(), m_options.forLife(life));
    if (!process.waitForFinished(lifeTimeoutMs))
        process.kill();
    process.waitForFinished();
    const bool inOrder = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    const QString end = process.exitStatus() == QProcess::NormalExit
        ? u"the client's run %1 ended with exit code %2"_s.arg(life.number).arg(process.exitCode())
        : u"the client's run %1 crashed or was ended for taking too long"_s.arg(life.number);

    // A bad end is the last step's fault, where all have told of themselves.
    for (const Step &step : steps) {
        const bool isLast = step.name == steps.constLast().name;
        const QString picture = m_journey.pictureName(step);
        if (!m_report.outcomes().contains(step.name) || (isLast && !inOrder))
            m_report.add({step.name, inOrder && step.endsProgram, 0,
                QFile::exists(m_options.out + u'/' + picture) ? picture : QString(), end});
    }
}
