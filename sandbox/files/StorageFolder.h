#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace sandbox {

//! Where the files lie: a folder that was given and stays, or a temporary one that exists from its
//! first use to the end of the run.
class StorageFolder
{
public:
    //! Makes the folder that is given; throws BadArgument when it cannot be used.
    explicit StorageFolder(const std::optional<std::string> &given);

    bool isTemporary() const { return m_temporary; }
    //! Made when it is missing.
    const std::filesystem::path &path();
    //! A temporary folder with all that is in it; another one is left alone.
    void removeTemporary();

private:
    bool m_temporary;
    std::filesystem::path m_path;
};

} // namespace sandbox
