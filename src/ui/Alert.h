#pragma once

#include <QString>
#include <QStringList>

//! One question or notice to the user, shown by AlertView.
struct Alert
{
    enum class Style {
        Dialog, //!< a box in the middle
        FullScreen, //!< a page of text with a close button, for notices
    };

    QString title {};
    QString message {};
    QStringList buttons {}; //!< from left to right; none gets one named 确定; not shown in FullScreen
    int tag = 0; //!< the caller's own mark
    bool cancellable = false; //!< the back key and a touch outside answer it too; FullScreen always is
    Style style = Style::Dialog;
};
