#pragma once

#include "files/FileStore.h"
#include "http/Addresses.h"
#include "http/Envelope.h"

namespace sandbox {

//! Tells clients which files and parts the storage has, permits them to store what is missing, and
//! makes one object of the parts. Form-encoded POSTs, JSON answers with "isError":
//!
//!   /file/check       hashKey, ext, column_key, uploadType
//!                     → host, uploadId, filePath, isUploaded
//!   /file/checkChunk  hashKey, mainKey, chunk, type, uploadId → isUploaded, authorization, date
//!   /file/chunkDone   hashKey, mainKey, chunk                 → isError when the part is not there
//!   /file/complete    hashKey, mainKey, chunks                → isError, see StoredFile::join
//!
//! mainKey is the filePath of the first answer, host the address to PUT the parts to and to GET the
//! object from.
class UploadService
{
public:
    UploadService(FileStore &store, const Addresses &addresses)
        : m_store(store)
        , m_addresses(addresses)
    {
    }

    Reply answer(const Request &request) const;

private:
    Json check(const Request &request) const;
    Json checkChunk(const Request &request) const;
    Json chunkDone(const Request &request) const;
    Json complete(const Request &request) const;
    FileStore::File fileOf(const Request &request) const;

    FileStore &m_store;
    const Addresses &m_addresses;
};

} // namespace sandbox
