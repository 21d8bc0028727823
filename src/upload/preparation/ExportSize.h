#pragma once

#include <QSize>

//! The size of an exported clip: fits 960×540, or 540×960 when it stands upright, keeps the shape
//! as near as even numbers allow, and is never larger than the clip.
QSize exportSize(const QSize &clip);
