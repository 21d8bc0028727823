#include "files/FileStore.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace sandbox {

namespace {

    constexpr std::string_view digits = "0123456789abcdef";
    constexpr size_t hashLength = 32;
    constexpr size_t longestExtension = 8;

    bool isHash(const std::string &text)
    {
        return text.size() == hashLength && text.find_first_not_of(digits) == text.npos;
    }

    //! As it may stand in the name of a file.
    std::string plainExtension(const std::string &extension)
    {
        const bool plain = !extension.empty() && extension.size() <= longestExtension
            && std::ranges::all_of(extension, [](unsigned char c) { return std::isalnum(c); });
        return plain ? extension : "bin";
    }

} // namespace

FileStore::FileStore(const std::optional<std::string> &folder)
    : m_folder(folder)
{
    if (m_folder.isTemporary())
        return;
    for (const auto &entry : fs::directory_iterator(m_folder.path()))
        if (const std::string hash = entry.path().stem(); entry.is_directory() && isHash(hash))
            m_files[hash] = std::make_shared<StoredFile>(entry.path());
}

FileStore::File FileStore::obtain(const std::string &hash, const std::string &extension)
{
    if (!isHash(hash))
        return {};
    const std::lock_guard lock(m_mutex);
    File &file = m_files[hash];
    if (!file) {
        const fs::path folder = m_folder.path() / (hash + "." + plainExtension(extension));
        fs::create_directory(folder);
        file = std::make_shared<StoredFile>(folder);
    }
    return file;
}

FileStore::File FileStore::byKey(const std::string &key) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_files.find(fs::path(key).stem());
    return found != m_files.end() && found->second->key() == key ? found->second : nullptr;
}

Json FileStore::description() const
{
    const std::lock_guard lock(m_mutex);
    Json files = Json::array();
    for (const auto &[hash, file] : m_files)
        files.push_back({{"hashKey", hash}, {"filePath", file->key()}, {"joined", file->isJoined()},
            {"parts", file->parts()}});
    return {{"files", files}};
}

void FileStore::reset()
{
    const std::lock_guard lock(m_mutex);
    if (!m_folder.isTemporary())
        return;
    m_files.clear();
    m_folder.removeTemporary();
}

void FileStore::removeTemporary()
{
    const std::lock_guard lock(m_mutex);
    m_folder.removeTemporary();
}

} // namespace sandbox
