#include "files/UploadService.h"

#include "files/Numbers.h"
#include "files/Signature.h"

#include <algorithm>

namespace sandbox {

namespace {

    Json error(const std::string &message)
    {
        return {{"isError", true}, {"isUploaded", false}, {"msg", message}};
    }

    const Json unknownFile = error("没有这个文件");

} // namespace

Reply UploadService::answer(const Request &request) const
{
    static constexpr struct
    {
        std::string_view path;
        Json (UploadService::*answer)(const Request &) const;
    } calls[] {
        {"/file/check", &UploadService::check},
        {"/file/checkChunk", &UploadService::checkChunk},
        {"/file/chunkDone", &UploadService::chunkDone},
        {"/file/complete", &UploadService::complete},
    };
    for (const auto &call : calls) {
        if (call.path != request.path)
            continue;
        if (!request.isForm())
            return textReply(405, "The upload service takes form-encoded POSTs\n");
        return jsonReply((this->*call.answer)(request));
    }
    return jsonReply({{"code", 404}, {"msg", "没有这个接口：" + request.path}}, 404);
}

Json UploadService::check(const Request &request) const
{
    const auto file = m_store.obtain(request.param("hashKey"), request.param("ext"));
    if (!file)
        return error("hashKey 不是 MD5");
    return {{"isError", false}, {"isUploaded", file->isJoined()},
        {"host", m_addresses.base(Host::Storage) + file->key()}, {"uploadId", file->uploadId()},
        {"filePath", file->key()}};
}

Json UploadService::checkChunk(const Request &request) const
{
    const auto file = fileOf(request);
    const auto number = partNumber(request.param("chunk"));
    if (!file || request.param("uploadId") != file->uploadId())
        return unknownFile;
    if (!number)
        return error("chunk 不是分块号");
    if (file->hasPart(*number))
        return {{"isError", false}, {"isUploaded", true}};
    const std::string date = signatureDate();
    const SignedRequest permitted {
        "PUT", request.param("type"), date, file->key(), request.param("chunk"), file->uploadId()};
    return {{"isError", false}, {"isUploaded", false},
        {"authorization", authorizationOf(permitted)}, {"date", date}};
}

Json UploadService::chunkDone(const Request &request) const
{
    const auto file = fileOf(request);
    const auto number = partNumber(request.param("chunk"));
    if (!file)
        return unknownFile;
    if (!number || !file->hasPart(*number))
        return error("没有这个分块");
    return {{"isError", false}};
}

Json UploadService::complete(const Request &request) const
{
    const auto file = fileOf(request);
    const auto count = partNumber(request.param("chunks"));
    if (!file)
        return unknownFile;
    if (!count || !file->join(*count))
        return error("分块不全或内容不符");
    return {{"isError", false}, {"filePath", file->key()}};
}

FileStore::File UploadService::fileOf(const Request &request) const
{
    const auto file = m_store.byKey(request.param("mainKey"));
    return file && file->hash() == request.param("hashKey") ? file : nullptr;
}

} // namespace sandbox
