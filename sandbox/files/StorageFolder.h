#pragma once

#include "http/TemporaryFolder.h"

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

    bool isTemporary() const { return m_given.empty(); }
    //! Made when it is missing.
    const std::filesystem::path &path();
    //! A temporary folder with all that is in it; another one is left alone.
    void removeTemporary() { m_temporary.remove(); }

private:
    std::filesystem::path m_given;
    TemporaryFolder m_temporary {"storage"};
};

} // namespace sandbox
