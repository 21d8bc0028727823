#pragma once

#include "upload/preparation/codecs/GstPointer.h"

#include <QByteArray>
#include <QString>

#include <chrono>

//! What every use of the media framework needs. Worker threads only: the very first start on a
//! device looks through all installed plugins, which takes about a second.
namespace MediaFramework {

//! How soon a wait for a pipeline notices that it shall stop.
constexpr std::chrono::milliseconds stopInterval {50};

//! Starts the framework unless it runs. False when it cannot be had.
bool start();

QByteArray uriOf(const QString &filePath);

//! The text of an error message.
QString textOf(GstMessage *error);

//! A pipeline that is taken down, its threads too, when it goes out of scope.
struct StopsPipeline
{
    void operator()(GstElement *pipeline) const;
};
using Pipeline = std::unique_ptr<GstElement, StopsPipeline>;

}
