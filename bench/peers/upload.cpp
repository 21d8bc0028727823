// peer_upload BASE FILE: the calls of an upload in their order, each after the other by one curl
// handle, which keeps a connection to either host.

#include "common/Clocks.h"

#include <curl/curl.h>
#include <nlohmann/json.hpp>
#include <openssl/evp.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

using Json = nlohmann::json;

namespace {

constexpr size_t partBytes = 512 * 1024;
constexpr size_t digestBlock = 8192;
constexpr const char *type = "video/mp4";

[[noreturn]] void fail(const std::string &why)
{
    std::fprintf(stderr, "peer_upload: %s\n", why.c_str());
    std::exit(EXIT_FAILURE);
}

std::string digestOf(std::ifstream &file)
{
    EVP_MD_CTX *context = EVP_MD_CTX_new();
    EVP_DigestInit_ex(context, EVP_md5(), nullptr);
    std::array<char, digestBlock> block;
    do {
        file.read(block.data(), block.size());
        EVP_DigestUpdate(context, block.data(), size_t(file.gcount()));
    } while (file);
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
    unsigned size = 0;
    EVP_DigestFinal_ex(context, digest.data(), &size);
    EVP_MD_CTX_free(context);
    std::string text;
    for (unsigned i = 0; i < size; ++i) {
        constexpr auto digits = "0123456789abcdef";
        text += digits[digest[i] >> 4];
        text += digits[digest[i] & 15];
    }
    return text;
}

struct Source
{
    const char *data;
    size_t left;
};

size_t take(char *to, size_t size, size_t count, void *from)
{
    auto *source = static_cast<Source *>(from);
    const size_t most = std::min(size * count, source->left);
    std::memcpy(to, source->data, most);
    source->data += most;
    source->left -= most;
    return most;
}

size_t append(char *data, size_t size, size_t count, void *to)
{
    static_cast<std::string *>(to)->append(data, size * count);
    return size * count;
}

class Client
{
public:
    explicit Client(std::string base)
        : m_base(std::move(base))
    {
    }
    ~Client() { curl_easy_cleanup(m_curl); }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    using Form = std::vector<std::pair<const char *, std::string>>;

    Json post(const std::string &path, const Form &form)
    {
        curl_easy_reset(m_curl);
        std::string body;
        for (const auto &[name, value] : form) {
            char *escaped = curl_easy_escape(m_curl, value.data(), int(value.size()));
            body += std::string(body.empty() ? "" : "&") + name + '=' + escaped;
            curl_free(escaped);
        }
        curl_easy_setopt(m_curl, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(body.size()));
        curl_easy_setopt(m_curl, CURLOPT_POSTFIELDS, body.c_str());
        return Json::parse(perform(m_base + path, nullptr));
    }

    void put(const std::string &url, const std::string &authorization, const std::string &date,
        const char *data, size_t size)
    {
        curl_easy_reset(m_curl);
        Source source {data, size};
        curl_easy_setopt(m_curl, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(m_curl, CURLOPT_READFUNCTION, take);
        curl_easy_setopt(m_curl, CURLOPT_READDATA, &source);
        curl_easy_setopt(m_curl, CURLOPT_INFILESIZE_LARGE, curl_off_t(size));
        curl_slist *headers = nullptr;
        for (const std::string &header : {std::string("Content-Type: ") + type,
                 "x-oss-date: " + date, "Authorization: " + authorization, std::string("Expect:")})
            headers = curl_slist_append(headers, header.c_str());
        perform(url, headers);
        curl_slist_free_all(headers);
    }

private:
    std::string perform(const std::string &url, curl_slist *headers)
    {
        std::string answer;
        curl_easy_setopt(m_curl, CURLOPT_URL, url.c_str());
        curl_easy_setopt(m_curl, CURLOPT_HTTPHEADER, headers);
        curl_easy_setopt(m_curl, CURLOPT_WRITEFUNCTION, append);
        curl_easy_setopt(m_curl, CURLOPT_WRITEDATA, &answer);
        if (const CURLcode code = curl_easy_perform(m_curl); code != CURLE_OK)
            fail(curl_easy_strerror(code));
        long status = 0;
        curl_easy_getinfo(m_curl, CURLINFO_RESPONSE_CODE, &status);
        if (status != 200)
            fail("status " + std::to_string(status) + " of " + url);
        return answer;
    }

    CURL *m_curl = curl_easy_init();
    std::string m_base;
};

void upload(Client &client, const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string hash = digestOf(file);
    const Json found = client.post("/file/check",
        {{"column_key", "bench"}, {"ext", "mp4"}, {"hashKey", hash}, {"uploadType", "1"}});
    if (found.at("isUploaded").get<bool>())
        fail("the service has the file already");
    const std::string key = found.at("filePath"), id = found.at("uploadId");
    const std::string host = found.at("host");

    file.clear();
    file.seekg(0);
    std::vector<char> part(partBytes);
    int count = 0;
    while (file.read(part.data(), std::streamsize(part.size())), file.gcount() > 0) {
        const std::string number = std::to_string(++count);
        const Json permit = client.post("/file/checkChunk",
            {{"chunk", number}, {"hashKey", hash}, {"mainKey", key}, {"type", type},
                {"uploadId", id}});
        client.put(host + "?partNumber=" + number + "&uploadId=" + id, permit.at("authorization"),
            permit.at("date"), part.data(), size_t(file.gcount()));
        client.post("/file/chunkDone", {{"chunk", number}, {"hashKey", hash}, {"mainKey", key}});
    }
    const Json joined = client.post(
        "/file/complete", {{"chunks", std::to_string(count)}, {"hashKey", hash}, {"mainKey", key}});
    if (joined.at("isError").get<bool>())
        fail("the parts were not joined");
}

}

int main(int argc, char **argv)
{
    if (argc != 3)
        fail("usage: peer_upload BASE FILE");
    curl_global_init(CURL_GLOBAL_DEFAULT);
    Client client(argv[1]);
    const Clocks clocks;
    upload(client, argv[2]);
    std::printf(R"({"wall_ms": %f, "cpu_ms": %f})", clocks.wall(), clocks.processor());
    return EXIT_SUCCESS;
}
