#pragma once

#include <string>

namespace sandbox {

//! What a school is called, and where it is.
struct SchoolName
{
    std::string text;
    size_t city = 0; //!< index into cities()
};

//! The name of the generated school with that number: as varied in form, length and reading as
//! those of a whole country, and always the same for the same number.
SchoolName schoolName(size_t number);

} // namespace sandbox
