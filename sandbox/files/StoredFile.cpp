#include "files/StoredFile.h"

#include "accounts/Signer.h"

#include <fstream>

#include <fcntl.h>

namespace fs = std::filesystem;

namespace sandbox {

namespace {

    constexpr auto partsName = "parts";
    constexpr auto recordName = "record";

    off_t placeOf(int number)
    {
        return off_t(partBytes) * (number - 1);
    }

} // namespace

StoredFile::StoredFile(fs::path folder)
    : m_folder(std::move(folder))
    , m_joined(fs::exists(object()))
{
    if (!m_joined)
        readRecord();
}

std::string StoredFile::uploadId() const
{
    return Signer::digest("upload", key());
}

bool StoredFile::isJoined() const
{
    const std::lock_guard lock(m_mutex);
    return m_joined;
}

bool StoredFile::hasPart(int number) const
{
    const std::lock_guard lock(m_mutex);
    return m_joined || m_sizes.contains(number);
}

std::vector<int> StoredFile::parts() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<int> numbers;
    for (const auto &[number, size] : m_sizes)
        numbers.push_back(number);
    return numbers;
}

bool StoredFile::putPart(int number, std::string_view bytes)
{
    const std::lock_guard lock(m_mutex);
    if (m_joined || number < 1 || number > mostParts || bytes.size() > partBytes)
        return false;
    open();
    if (number <= m_digested) {
        m_md5.take();
        m_digested = 0;
    }
    m_parts.write(bytes.data(), bytes.size(), placeOf(number));
    const std::string line = std::to_string(number) + ' ' + std::to_string(bytes.size()) + '\n';
    m_record.write(line.data(), line.size(), off_t(m_recorded));
    m_recorded += line.size();
    m_sizes[number] = bytes.size();
    // Parts mostly come in order; what is digested on the way need not be read again at the end.
    if (number == m_digested + 1) {
        m_md5.add(bytes);
        m_digested = number;
    }
    return true;
}

bool StoredFile::join(int count)
{
    const std::lock_guard lock(m_mutex);
    if (m_joined)
        return true;
    if (!isWhole(count))
        return false;
    open();
    if (digest(count) != hash()) {
        dropParts();
        return false;
    }
    fs::resize_file(m_folder / partsName, size_t(placeOf(count)) + m_sizes[count]);
    fs::rename(m_folder / partsName, object());
    m_joined = true;
    dropParts();
    return true;
}

bool StoredFile::isWhole(int count) const
{
    if (count < 1 || m_sizes.size() != size_t(count) || m_sizes.rbegin()->first != count)
        return false;
    for (const auto &[number, size] : m_sizes)
        if (number != count && size != partBytes)
            return false;
    return true;
}

std::string StoredFile::digest(int count)
{
    std::string part(partBytes, '\0');
    for (; m_digested < count; ++m_digested)
        m_md5.add({part.data(),
            m_parts.read(part.data(), m_sizes[m_digested + 1], placeOf(m_digested + 1))});
    m_digested = 0;
    return m_md5.take();
}

void StoredFile::readRecord()
{
    std::ifstream record(m_folder / recordName);
    std::string line;
    // A line without its end was being written when the process died; the next takes its place.
    while (std::getline(record, line) && !record.eof()) {
        m_recorded += line.size() + 1;
        const int number = std::atoi(line.c_str());
        m_sizes[number] = std::stoul(line.substr(line.find(' ') + 1));
    }
}

void StoredFile::open()
{
    if (m_parts.isOpen())
        return;
    fs::create_directories(m_folder);
    m_parts = OpenFile(m_folder / partsName, O_RDWR | O_CREAT);
    m_record = OpenFile(m_folder / recordName, O_RDWR | O_CREAT);
}

void StoredFile::dropParts()
{
    m_parts = {};
    m_record = {};
    m_sizes.clear();
    m_recorded = 0;
    fs::remove(m_folder / recordName);
    fs::remove(m_folder / partsName);
}

} // namespace sandbox
