#pragma once

#include "files/StoredFile.h"

#include <charconv>
#include <optional>
#include <string>

namespace sandbox {

//! The number of a part, or of parts, as a client wrote it; nothing when it is none from 1 to
//! mostParts.
inline std::optional<int> partNumber(const std::string &text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1
        || number > mostParts)
        return {};
    return number;
}

} // namespace sandbox
