#pragma once

#include "net/request/ResponseErrorInfo.h"

#include <QJsonValue>

#include <functional>
#include <optional>

//! What a call ends with.
namespace ResponseStatus {

constexpr int failure = 1;
constexpr int success = 200;
//! A success of its own kind; what it means is up to the call.
constexpr int secondSuccess = 8888;

}

//! The completion of a call: called once, on the main thread, never from inside the call that
//! started it.
//!
//! Status 200 or 8888: data is the answer's "data" (Undefined when it has none), no error.
//! Status 1: data is Undefined, and the error says why; an answer that is no JSON object has no
//! error either.
using ResponseCallback = std::function<void(
    int status, const QJsonValue &data, const std::optional<ResponseErrorInfo> &error)>;
