#pragma once

#include <QtGlobal>

#include <functional>

//! Told after each block of a long read how many bytes are done; an answer of false ends the work
//! there, as a failure.
using BlockWatcher = std::function<bool(qint64 bytesDone)>;
