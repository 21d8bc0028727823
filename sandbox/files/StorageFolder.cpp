#include "files/StorageFolder.h"

#include "http/Options.h"

#include <unistd.h>

namespace fs = std::filesystem;

namespace sandbox {

StorageFolder::StorageFolder(const std::optional<std::string> &given)
    : m_given(given.value_or(""))
{
    std::error_code error;
    if (given)
        fs::create_directories(m_given, error);
    if (given && (error || access(m_given.c_str(), R_OK | W_OK | X_OK) != 0))
        throw BadArgument("--storage: cannot keep files in \"" + *given + "\"");
}

const fs::path &StorageFolder::path()
{
    return isTemporary() ? m_temporary.path() : m_given;
}

} // namespace sandbox
