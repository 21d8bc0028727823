#pragma once

#include "files/StorageFolder.h"
#include "files/StoredFile.h"
#include "http/Envelope.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace sandbox {

//! All uploaded files, known by the MD5 of their content: those that are whole and those of which
//! parts have come. What upload service and object storage share. Owned by main.
class FileStore
{
public:
    using File = std::shared_ptr<StoredFile>;

    //! Without a folder: for this run only.
    explicit FileStore(const std::optional<std::string> &folder);

    //! The file with that content, made where there is none; its extension is that of the first
    //! who asked. Nothing when the hash is no MD5.
    File obtain(const std::string &hash, const std::string &extension);
    //! The file of that name in the storage, see StoredFile::key.
    File byKey(const std::string &key) const;

    //! {"files": [{"hashKey", "filePath", "joined", "parts": [numbers]}]}
    Json description() const;
    //! Forgets and removes everything, unless it is kept in a folder that was given.
    void reset();
    void removeTemporary();

private:
    mutable std::mutex m_mutex;
    StorageFolder m_folder;
    std::map<std::string, File> m_files; //!< by hash
};

} // namespace sandbox
