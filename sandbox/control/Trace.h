#pragma once

#include "http/Envelope.h"

#include <deque>
#include <fstream>
#include <mutex>

namespace sandbox {

//! What came over the wire, one JSON object a request, in the order in which the answers were
//! ready. Entries are written, and flushed, before the answer leaves: who has an answer can read
//! its entry.
class Trace
{
public:
    //! Appends to the file too; false when it cannot be opened.
    [[nodiscard]] bool openFile(const std::string &path);
    void record(const Request &request, const Addresses &addresses, const Reply &reply);
    //! {"next": number to ask for later, "requests": entries from number since on}
    Json since(size_t since) const;
    void clear();

private:
    static constexpr size_t mostKept = 20'000;

    mutable std::mutex m_mutex;
    std::deque<Json> m_entries;
    size_t m_dropped = 0; //!< number of the first entry kept
    std::ofstream m_file;
};

} // namespace sandbox
