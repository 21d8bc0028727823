#pragma once

#include <QPointF>
#include <QString>

//! Who is told about a launch advertisement.
class LaunchAdDelegate
{
public:
    virtual ~LaunchAdDelegate() = default;

    //! A tap on the picture; true: the advertisement shall go.
    virtual bool xhLaunchAd(const QString &openModel, QPointF clickPoint) = 0;
    //! Once, whatever became of the advertisement: nothing covers the window any more.
    virtual void xhLaunchAdShowFinish() = 0;
};
