#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace sandbox {

//! A city of the country, with its province and its parts.
struct City
{
    std::string_view province;
    std::string_view name;
    std::vector<std::string_view> districts;

    bool isMunicipality() const { return province == name; }
};

//! The cities in which the platform has schools, those of one province side by side.
std::span<const City> cities();

} // namespace sandbox
