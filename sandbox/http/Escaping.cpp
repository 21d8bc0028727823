#include "http/Escaping.h"

#include <cctype>

namespace sandbox {

std::string percentEncoded(std::string_view text)
{
    constexpr std::string_view hex = "0123456789ABCDEF";
    std::string encoded;
    for (const unsigned char c : text) {
        if (std::isalnum(c) || c == '-' || c == '_' || c == '.' || c == '~')
            encoded += char(c);
        else
            encoded += {'%', hex[c >> 4], hex[c & 15]};
    }
    return encoded;
}

std::string htmlEscaped(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

void replaceAll(std::string &text, std::string_view mark, std::string_view value)
{
    for (size_t at = text.find(mark); at != text.npos; at = text.find(mark, at + value.size()))
        text.replace(at, mark.size(), value);
}

} // namespace sandbox
