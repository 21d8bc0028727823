// bench_frames make FILE WIDTH HEIGHT: writes a grey picture as a camera might take it of a code.
// bench_frames read FILE COUNT: reads the picture as a camera's frame, COUNT times.

#include "common/Clocks.h"
#include "services/SampleCodes.h"
#include "services/scan/CodeReader.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QRandomGenerator>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString text = QStringLiteral("https://school.example/sign?class=3&seat=17");
constexpr QSize hd {1920, 1080};
constexpr double tilt = 12;
constexpr int noise = 8;

// Uneven light, a code that is held askew, edges that are not sharp, and noise.
QImage taken(QSize size)
{
    QImage image(hd, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient light(0, 0, hd.width(), hd.height());
    light.setColorAt(0, QColor(90, 90, 90));
    light.setColorAt(1, QColor(190, 190, 190));
    painter.fillRect(image.rect(), light);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(hd.width() / 2, hd.height() / 2);
    painter.rotate(tilt);
    painter.setOpacity(0.85);
    painter.drawImage(QRect(-260, -260, 520, 520), SampleCodes::qr(text));
    painter.end();

    QImage grey = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(QImage::Format_Grayscale8);
    QRandomGenerator random(1);
    for (int y = 0; y < grey.height(); ++y) {
        uchar *line = grey.scanLine(y);
        for (int x = 0; x < grey.width(); ++x)
            line[x] = uchar(std::clamp(line[x] + random.bounded(-noise, noise + 1), 0, 255));
    }
    return grey;
}

void read(const QString &path, int count)
{
    const QVideoFrame frame = SampleCodes::frame(QImage(path), QVideoFrameFormat::Format_Y8);
    const Clocks clocks;
    for (int i = 0; i < count; ++i) {
        if (CodeReader::readFrame(frame).codes != QStringList {text})
            qFatal("the code was not read");
    }
    std::printf(R"({"ms_per_frame": %f})", clocks.wall() / count);
}

}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 5 && arguments[1] == u"make")
        return taken({arguments[3].toInt(), arguments[4].toInt()}).save(arguments[2], "PGM")
            ? EXIT_SUCCESS
            : EXIT_FAILURE;
    if (arguments.size() != 4 || arguments[1] != u"read")
        qFatal("usage: bench_frames make FILE WIDTH HEIGHT | read FILE COUNT");
    read(arguments[2], arguments[3].toInt());
    return EXIT_SUCCESS;
}
