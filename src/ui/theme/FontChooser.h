#pragma once

#include <QFont>
#include <QStringList>

//! Picks the font of the whole application: one that has Chinese glyphs, at a size that follows the
//! user's own.
//!
//! The text scale is VANT_FONT_SCALE (0.5 to 3) where it is set; else 1 for system fonts of up to
//! 12 pt, which covers the desktops' defaults, and the system font's size in units of 10 pt above.
//! Theme.fontScale in QML is the same number, read back from the application font.
namespace FontChooser {

//! Pixel size of body text at scale 1.
constexpr int bodyPixelSize = 16;

//! The first known Chinese family among the available ones, else the first that claims simplified
//! Chinese, else empty.
QString chineseFamily(const QStringList &available, const QStringList &simplifiedChinese);

//! The first known Chinese family with serifs among the available ones, else empty.
QString chineseSerifFamily(const QStringList &available);

//! \a environment: the value of VANT_FONT_SCALE, null when not set.
double textScale(double systemPointSize, const QString &environment);

//! Sets the application font; warns in the log where no font of the system has Chinese glyphs. Call
//! before any QML.
void apply();

} // namespace FontChooser
