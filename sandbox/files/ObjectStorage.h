#pragma once

#include "files/FileStore.h"
#include "http/Message.h"

namespace sandbox {

//! Takes parts, PUT /<key>?partNumber=N&uploadId=U, from those whom the upload service has
//! permitted it, and gives joined objects to everyone, GET /<key>, ranges of them too.
class ObjectStorage
{
public:
    explicit ObjectStorage(FileStore &store)
        : m_store(store)
    {
    }

    Reply answer(const Request &request) const;

private:
    Reply put(const Request &request, const std::string &key) const;
    Reply get(const std::string &key) const;

    FileStore &m_store;
};

} // namespace sandbox
