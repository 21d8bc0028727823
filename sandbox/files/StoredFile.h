#pragma once

#include "files/Md5.h"
#include "http/OpenFile.h"

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace sandbox {

//! The largest part, and the place of each: part n begins n-1 times this from the start.
inline constexpr size_t partBytes = 524288;
inline constexpr int mostParts = 10'000;

//! One file of the storage: its parts while it is on its way, afterwards the object. All that it
//! knows lies in its folder, named "<MD5 of the content>.<extension>", and is found there again by
//! the next process. Owned by FileStore; used from many threads.
class StoredFile
{
public:
    explicit StoredFile(std::filesystem::path folder);

    std::string hash() const { return m_folder.stem(); }
    //! Its name in the storage, "files/<hash>.<extension>".
    std::string key() const { return "files/" + m_folder.filename().string(); }
    std::string uploadId() const;

    bool isJoined() const;
    //! True for the parts of a joined file too, whatever their number.
    bool hasPart(int number) const;
    std::vector<int> parts() const;
    //! Anew, if it was there before. False when the file is joined or the part no possible one.
    bool putPart(int number, std::string_view bytes);
    //! Makes one object of so many parts. False when one is missing, when one but the last is not
    //! of the full size, and when the content is not what the hash says: then all parts are
    //! dropped, for they would be wrong in the next attempt too.
    bool join(int count);
    //! The joined object.
    std::filesystem::path object() const { return m_folder / "object"; }

private:
    void readRecord();
    void open();
    void dropParts();
    bool isWhole(int count) const;
    std::string digest(int count);

    const std::filesystem::path m_folder;
    mutable std::mutex m_mutex;
    bool m_joined = false;
    std::map<int, size_t> m_sizes; //!< of the parts that are there
    OpenFile m_parts; //!< every part at its place
    OpenFile m_record; //!< a line "number size" for each part that has been written whole
    size_t m_recorded = 0; //!< bytes of whole lines in it
    Md5 m_md5; //!< of the parts 1 to m_digested
    int m_digested = 0;
};

} // namespace sandbox
