#include "files/StorageFolder.h"

#include "Options.h"

#include <cerrno>
#include <charconv>
#include <csignal>

#include <unistd.h>

namespace fs = std::filesystem;

namespace sandbox {

namespace {

    constexpr std::string_view prefix = "vant-sandbox-storage-";

    //! Temporary folders whose makers were killed before they could remove them.
    void removeLeftOvers()
    {
        std::error_code error;
        for (const auto &entry : fs::directory_iterator(fs::temp_directory_path(), error)) {
            const std::string name = entry.path().filename();
            if (!name.starts_with(prefix))
                continue;
            pid_t maker = 0;
            std::from_chars(name.data() + prefix.size(), name.data() + name.size(), maker);
            if (maker > 0 && kill(maker, 0) != 0 && errno == ESRCH)
                fs::remove_all(entry.path(), error);
        }
    }

} // namespace

StorageFolder::StorageFolder(const std::optional<std::string> &given)
    : m_temporary(!given)
    , m_path(given.value_or(""))
{
    std::error_code error;
    if (given)
        fs::create_directories(m_path, error);
    if (given && (error || access(m_path.c_str(), R_OK | W_OK | X_OK) != 0))
        throw BadArgument("--storage: cannot keep files in \"" + *given + "\"");
}

const fs::path &StorageFolder::path()
{
    if (m_path.empty()) {
        removeLeftOvers();
        m_path = fs::temp_directory_path() / (std::string(prefix) + std::to_string(getpid()));
        fs::create_directory(m_path);
        fs::permissions(m_path, fs::perms::owner_all);
    }
    return m_path;
}

void StorageFolder::removeTemporary()
{
    if (!m_temporary || m_path.empty())
        return;
    std::error_code error; // a part that still arrives may be in the way
    fs::remove_all(m_path, error);
    m_path.clear();
}

} // namespace sandbox
