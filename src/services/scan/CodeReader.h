#pragma once

#include <QStringList>

class QImage;
class QVideoFrame;

//! Reads QR, EAN-13, EAN-8 and Code 128 codes. Any thread but the main one: a picture takes from a
//! few milliseconds to seconds.
namespace CodeReader {

//! Brightness in steps of the exposure scale, from the mean luma Y of 0 to 255:
//! 2 + log2((Y / 255)^2.2 / 0.18). Middle grey is 2, as in an ordinary room, and each halving of
//! the light takes 1 away; -1.0 is a mean luma of about 45. Black counts as a luma of 1.
double brightnessOf(double meanLuma);

//! What is seen in a frame of the camera.
struct FrameContent
{
    //! The text of the first code that was found, if any; it may be empty.
    QStringList codes;
    double brightness = 0;
};

//! Reads a camera's frame once, fast enough for every frame. A frame that cannot be read is empty
//! and of middle brightness.
FrameContent readFrame(QVideoFrame frame);

//! Reads a still picture with patience: inverted, blurred and turned ones too. Stops at the first
//! attempt that finds a code that is not empty; null without one.
QString readPicture(const QImage &picture);

//! The same for a file; one that is no picture has no code.
QString readFile(const QString &filePath);

}
