#pragma once

#include <string>
#include <string_view>

namespace sandbox {

//! For a value in a URL's query.
std::string percentEncoded(std::string_view text);
//! For text and attribute values of a page.
std::string htmlEscaped(std::string_view text);
void replaceAll(std::string &text, std::string_view mark, std::string_view value);

} // namespace sandbox
