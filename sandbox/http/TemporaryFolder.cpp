#include "http/TemporaryFolder.h"

#include <cerrno>
#include <charconv>
#include <csignal>

#include <unistd.h>

namespace fs = std::filesystem;

namespace sandbox {

TemporaryFolder::TemporaryFolder(const std::string &purpose)
    : m_prefix("vant-sandbox-" + purpose + "-")
{
}

void TemporaryFolder::removeLeftOvers() const
{
    std::error_code error;
    for (const auto &entry : fs::directory_iterator(fs::temp_directory_path(), error)) {
        const std::string name = entry.path().filename();
        if (!name.starts_with(m_prefix))
            continue;
        pid_t maker = 0;
        std::from_chars(name.data() + m_prefix.size(), name.data() + name.size(), maker);
        if (maker > 0 && kill(maker, 0) != 0 && errno == ESRCH)
            fs::remove_all(entry.path(), error);
    }
}

const fs::path &TemporaryFolder::path()
{
    if (m_path.empty()) {
        removeLeftOvers();
        m_path = fs::temp_directory_path() / (m_prefix + std::to_string(getpid()));
        fs::create_directory(m_path);
        fs::permissions(m_path, fs::perms::owner_all);
    }
    return m_path;
}

void TemporaryFolder::remove()
{
    if (m_path.empty())
        return;
    std::error_code error; // something that still arrives may be in the way
    fs::remove_all(m_path, error);
    m_path.clear();
}

} // namespace sandbox
