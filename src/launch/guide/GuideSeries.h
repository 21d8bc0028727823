#pragma once

#include <QSize>
#include <QString>

//! The five drawings of each page of the guide, for screens of different shape and fineness.
namespace GuideSeries {

//! The file name's form, with "%d" for the page from 1, that suits a screen of this many pixels.
QString forScreen(const QSize &pixels);
//! The picture of a page, counted from 1, in the resources.
QString picture(const QString &series, int page);

}
