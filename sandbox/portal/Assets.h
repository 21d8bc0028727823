#pragma once

#include <map>
#include <string_view>

namespace sandbox {

//! The pages and pictures compiled into the program, by their address ("/portal/index.html").
const std::map<std::string_view, std::string_view> &embeddedAssets();

} // namespace sandbox
