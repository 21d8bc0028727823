#pragma once

#include <QSize>

//! The screen sizes that advertisements are drawn for.
namespace AdResolution {

//! The size to ask for on a screen of this many pixels, portrait.
QSize forScreen(const QSize &pixels);

}
