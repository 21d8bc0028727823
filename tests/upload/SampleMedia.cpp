#include "upload/SampleMedia.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

void runTool(const QString &program, const QStringList &arguments)
{
    if (QProcess::execute(program, arguments) != 0)
        qFatal("%s failed", qPrintable(program));
}

void runPipeline(const QString &path, const QString &elements)
{
    // A path with spaces would be several words of a pipeline.
    const QString plain = QString(path + u".new"_s).replace(u' ', u'_');
    const QString line = elements + u" ! filesink location="_s + plain;
    runTool(u"gst-launch-1.0"_s, QStringList {u"-q"_s} + line.split(u' ', Qt::SkipEmptyParts));
    QFile::rename(plain, path);
}

}

void SampleMedia::writePhoto(const QString &path, const char *format, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter(&image).fillRect(0, size.height() / 2, size.width(), size.height(), Qt::white);
    if (!image.save(path, format))
        qFatal("no %s can be made", format);
}

void SampleMedia::writeHeic(const QString &path, const QSize &size)
{
    writePhoto(path, "PNG", size);
    writeHeic(path, QImage(path, "PNG"));
}

void SampleMedia::writeHeic(const QString &path, const QImage &image)
{
    const QString png = path + u".png"_s;
    if (!image.save(png))
        qFatal("%s cannot be written", qPrintable(png));
    runTool(u"heif-enc"_s, {u"-o"_s, path, png});
    QFile::remove(png);
}

void SampleMedia::writeClip(
    const QString &path, const QString &caps, Sound sound, int frames, const QString &pattern)
{
    QString elements = u"videotestsrc num-buffers=%1 pattern=%3 ! video/x-raw,framerate=30/1,%2"
                       " ! x264enc speed-preset=ultrafast ! mux. "_s.arg(frames)
                           .arg(caps, pattern);
    if (sound == Sound::Ticking)
        elements
            += u"audiotestsrc wave=ticks num-buffers=%1 ! avenc_aac ! mux. "_s.arg(frames * 3 / 2);
    runPipeline(path, elements + u"mp4mux name=mux"_s);
}

void SampleMedia::writeSound(const QString &path)
{
    runPipeline(path, u"audiotestsrc num-buffers=50 ! avenc_aac ! mp4mux"_s);
}

void SampleMedia::turnClip(const QString &path)
{
    constexpr qsizetype fromTypeToMatrix = 44;
    QByteArray clip = contentOf(path);
    clip.replace(clip.indexOf("tkhd") + fromTypeToMatrix, 20,
        QByteArray::fromHex("0000000000010000"
                            "00000000ffff0000"
                            "00000000"));
    write(path, clip);
}

QByteArray SampleMedia::contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void SampleMedia::write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}
