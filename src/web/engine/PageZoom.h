#pragma once

#include <QString>

//! How large a page is drawn: a pure function.
namespace PageZoom {

//! \a width: of the view, in points. \a textScale: how much larger than usual the user wants text.
//! \a viewport: what the page's <meta name=viewport> says, of which the engine takes no notice.
//!
//! A page that wants a width of its own is drawn smaller where the view is narrower. Larger text
//! makes the whole page larger, as long as it keeps its width, or 320 px where it names none;
//! smaller text leaves it as it is.
double factor(double width, double textScale, const QString &viewport);

}
