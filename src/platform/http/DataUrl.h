#pragma once

#include "platform/transport/HTTPTypes.h"

#include <QUrl>

#include <optional>

//! Addresses that are their own content (RFC 2397).
namespace DataUrl {

//! The content as if a server had given it; nothing for another kind of address, or a broken one.
std::optional<HTTPResponse> content(const QUrl &url);

}
