#pragma once

#include <string>

#include <sys/types.h>

namespace sandbox {

//! A file of the system, closed with the object. Reading and writing name their place, so that
//! several threads can share it.
class OpenFile
{
public:
    OpenFile() = default;
    //! flags as those of open(2); throws std::system_error that names the file.
    OpenFile(const std::string &path, int flags);
    OpenFile(OpenFile &&other) noexcept;
    OpenFile &operator=(OpenFile &&other) noexcept;
    ~OpenFile();

    int descriptor() const { return m_descriptor; }
    bool isOpen() const { return m_descriptor >= 0; }
    size_t size() const;
    //! As many bytes as there are, at most so many.
    size_t read(char *to, size_t most, off_t offset) const;
    //! All of them; throws std::system_error.
    void write(const char *from, size_t count, off_t offset) const;

private:
    int m_descriptor = -1;
};

} // namespace sandbox
