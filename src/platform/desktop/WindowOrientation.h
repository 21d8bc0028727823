#pragma once

#include <QString>

class QWindow;

//! Which way up a window's content is, as the window system is told.
namespace WindowOrientation {

//! Null: the window system has been told. Otherwise why it cannot be, for the log.
QString request(QWindow *window, Qt::ScreenOrientation orientation);

}
