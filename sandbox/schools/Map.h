#pragma once

#include "http/Message.h"

namespace sandbox {

//! The only key that the map service takes.
inline constexpr std::string_view mapKey = "3c9e0b7d51f6a2e84c07d9b3a6e5f201";

//! The map vendor's reverse geocoding: the address of "location" (longitude,latitude). Far from
//! every city it knows, all parts of the address are empty lists, as the vendor writes them.
Reply regeocode(const Request &request);

} // namespace sandbox
