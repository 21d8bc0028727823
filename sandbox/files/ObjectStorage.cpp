#include "files/ObjectStorage.h"

#include "files/Numbers.h"
#include "files/Signature.h"

#include <openssl/crypto.h>

namespace sandbox {

namespace {

    bool isPermitted(const Request &request, const std::string &key)
    {
        const SignedRequest what {request.method, request.header("Content-Type"),
            request.header("x-oss-date"), key, request.param("partNumber"),
            request.param("uploadId")};
        const std::string expected = authorizationOf(what);
        const std::string given = request.header("Authorization");
        return given.size() == expected.size()
            && CRYPTO_memcmp(given.data(), expected.data(), given.size()) == 0;
    }

    //! By its name, for a client may have sent a picture of any kind under one content type.
    std::string contentTypeOf(const std::string &key)
    {
        static const std::map<std::string, std::string> types {{"jpeg", "image/jpeg"},
            {"jpg", "image/jpeg"}, {"png", "image/png"}, {"gif", "image/gif"},
            {"mp4", "video/mp4"}};
        const auto found = types.find(key.substr(key.rfind('.') + 1));
        return found == types.end() ? "application/octet-stream" : found->second;
    }

} // namespace

Reply ObjectStorage::answer(const Request &request) const
{
    const std::string key = request.path.substr(1);
    if (request.method == "PUT")
        return put(request, key);
    if (request.method == "GET" || request.method == "HEAD")
        return get(key);
    return textReply(405, "The storage takes no " + request.method + "\n");
}

Reply ObjectStorage::put(const Request &request, const std::string &key) const
{
    if (!isPermitted(request, key))
        return textReply(403, "SignatureDoesNotMatch\n");
    const auto file = m_store.byKey(key);
    if (!file || file->uploadId() != request.param("uploadId") || file->isJoined())
        return textReply(404, "NoSuchUpload\n");
    const auto number = partNumber(request.param("partNumber"));
    if (!number)
        return textReply(400, "InvalidPartNumber\n");
    if (request.body.size() > partBytes)
        return textReply(413, "EntityTooLarge\n");
    return file->putPart(*number, request.body) ? textReply(200, {})
                                                : textReply(404, "NoSuchUpload\n");
}

Reply ObjectStorage::get(const std::string &key) const
{
    const auto file = m_store.byKey(key);
    if (!file || !file->isJoined())
        return jsonReply({{"code", 404}, {"msg", "NoSuchKey"}}, 404);
    Reply reply;
    reply.contentType = contentTypeOf(key);
    reply.file = file->object();
    return reply;
}

} // namespace sandbox
