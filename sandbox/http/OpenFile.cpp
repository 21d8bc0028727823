#include "http/OpenFile.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sandbox {

OpenFile::OpenFile(const std::string &path, int flags)
    : m_descriptor(open(path.c_str(), flags | O_CLOEXEC, 0600))
{
    if (m_descriptor < 0)
        throw std::system_error(errno, std::generic_category(), path);
}

OpenFile::OpenFile(OpenFile &&other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

OpenFile &OpenFile::operator=(OpenFile &&other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

OpenFile::~OpenFile()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

size_t OpenFile::size() const
{
    struct stat info
    {
    };
    return fstat(m_descriptor, &info) == 0 ? size_t(info.st_size) : 0;
}

size_t OpenFile::read(char *to, size_t most, off_t offset) const
{
    size_t got = 0;
    while (got < most) {
        const ssize_t count = pread(m_descriptor, to + got, most - got, offset + off_t(got));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        got += size_t(count);
    }
    return got;
}

void OpenFile::write(const char *from, size_t count, off_t offset) const
{
    for (size_t done = 0; done < count;) {
        const ssize_t written
            = pwrite(m_descriptor, from + done, count - done, offset + off_t(done));
        if (written < 0 && errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "writing");
        if (written > 0)
            done += size_t(written);
    }
}

} // namespace sandbox
