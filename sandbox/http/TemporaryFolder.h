#pragma once

#include <filesystem>
#include <string>

namespace sandbox {

//! A folder of this run: exists from its first use until it is removed. Folders of runs that were
//! killed before they could remove theirs go when the next one is made.
class TemporaryFolder
{
public:
    //! \a purpose tells several folders of one run apart.
    explicit TemporaryFolder(const std::string &purpose);

    //! Made when it is missing; for the eyes of its owner alone.
    const std::filesystem::path &path();
    //! The folder with all that is in it.
    void remove();

private:
    void removeLeftOvers() const;

    std::string m_prefix;
    std::filesystem::path m_path;
};

} // namespace sandbox
