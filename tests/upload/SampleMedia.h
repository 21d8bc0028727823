#pragma once

#include <QString>

class QImage;
class QSize;

//! Photos and clips that the tests make for themselves. They are black at the top and white at the
//! bottom. What cannot be made ends the test program.
namespace SampleMedia {

enum class Sound { None, Ticking };

void writePhoto(const QString &path, const char *format, const QSize &size);
void writeHeic(const QString &path, const QSize &size);
void writeHeic(const QString &path, const QImage &image);

//! H.264 in MP4, 30 frames a second. \a caps: such as "width=320,height=240". \a pattern: "snow"
//! makes a large file.
void writeClip(const QString &path, const QString &caps, Sound sound = Sound::None, int frames = 60,
    const QString &pattern = QStringLiteral("gradient"));
//! Sound without a picture.
void writeSound(const QString &path);
//! Makes a clip one that is to be shown turned clockwise by a quarter, as of a phone that was held
//! upright.
void turnClip(const QString &path);

QByteArray contentOf(const QString &path);
void write(const QString &path, const QByteArray &content);

}
