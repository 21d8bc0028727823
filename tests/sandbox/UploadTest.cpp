#include "Sandbox.h"

#include <QTemporaryDir>

#include <iomanip>
#include <set>

#include <openssl/evp.h>

using namespace Qt::StringLiterals;

namespace {

using std::to_string;
constexpr size_t partSize = 524288;

std::string md5(const std::string &content)
{
    unsigned char digest[16];
    EVP_Digest(content.data(), content.size(), digest, nullptr, EVP_md5(), nullptr);
    std::ostringstream hex;
    for (const int byte : digest)
        hex << std::hex << std::setw(2) << std::setfill('0') << byte;
    return hex.str();
}

std::string contentOf(size_t size)
{
    std::string content(size, '\0');
    for (unsigned state = 1; char &byte : content)
        byte = char((state = state * 1664525 + 1013904223) >> 24);
    return content;
}

//! One file on its way, over one connection to each of the two hosts.
struct Upload
{
    Upload(const Sandbox &sandbox, std::string bytes)
        : content(std::move(bytes))
        , service(sandbox.client(7))
        , storage(sandbox.client(8))
    {
        for (httplib::Client *host : {&service, &storage})
            host->set_keep_alive(true);
        file.emplace("hashKey", md5(content));
        about = call("check", {{"ext", "mp4"}, {"column_key", "homework"}, {"uploadType", "1"}});
        file.insert({{"type", "video/mp4"}, {"mainKey", about["filePath"]},
            {"uploadId", about["uploadId"]}});
    }
    Json call(const std::string &what, httplib::Params params)
    {
        params.insert(file.begin(), file.end());
        const httplib::Result result = service.Post("/file/" + what, params);
        return result ? Json::parse(result->body, nullptr, false) : Json();
    }
    Json check(const std::string &part) { return call("checkChunk", {{"chunk", part}}); }
    bool has(int part) { return !call("chunkDone", {{"chunk", to_string(part)}})["isError"]; }
    bool join(int count) { return !call("complete", {{"chunks", to_string(count)}})["isError"]; }
    //! The HTTP status, 0 without an answer.
    int put(const std::string &target, const std::string &bytes, const Json &permit,
        const std::string &type = "video/mp4")
    {
        const httplib::Result result = storage.Put(target,
            {{"Authorization", permit.value("authorization", "")},
                {"x-oss-date", permit.value("date", "")}},
            bytes, type);
        return result ? result->status : 0;
    }
    int put(int part)
    {
        return put(target(part), content.substr(partSize * size_t(part - 1), partSize),
            check(to_string(part)));
    }
    std::string target(int part) const
    {
        return path() + "?partNumber=" + to_string(part)
            + "&uploadId=" + about.value("uploadId", "");
    }
    std::string object() { return storage.Get(path())->body; }
    std::string path() const { return "/" + about["filePath"].get<std::string>(); }
    std::string content;
    httplib::Client service, storage;
    httplib::Params file; //!< what every call says
    Json about; //!< the answer to the first question
};

//! Which of the rows it was.
#define VERIFY3(condition, row) QVERIFY2(condition, std::string(row).c_str())
#define COMPARE3(actual, expected, row)                                                            \
    do {                                                                                           \
        const Json got(actual);                                                                    \
        QVERIFY2(got == Json(expected), (std::string(row) + ": " + got.dump()).c_str());           \
    } while (false)

}

//! Files in parts, as the client sends them: the file service and the storage.
class UploadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filesGoUpInPartsOverOneConnectionAHost();
    void whatIsStoredOutlivesTheProcess();
    void aPermissionIsGoodForWhatItWasGivenForOnly();
    void faultsSpoilThePartTheyAreFor();
};

void UploadTest::filesGoUpInPartsOverOneConnectionAHost()
{
    const std::pair<size_t, int> rows[] {{1, 1}, {partSize, 1}, {partSize + 1, 2}, {1048577, 3}};
    for (const auto &[size, parts] : rows) {
        const std::string row = to_string(size);
        const Sandbox sandbox;
        Upload upload(sandbox, contentOf(size));
        COMPARE3(upload.about["host"], sandbox.base(8) + upload.path(), row);
        for (int number = 1; number <= parts; ++number)
            VERIFY3(!upload.has(number) && upload.put(number) == 200 && upload.has(number), row);
        COMPARE3(upload.storage.Get(upload.path())->status, 404, row);
        VERIFY3(upload.join(parts) && upload.object() == upload.content, row);
        const httplib::Result last = upload.storage.Get(upload.path(), {{"Range", "bytes=-1"}});
        VERIFY3(last->status == 206 && last->body == upload.content.substr(size - 1), row);
        COMPARE3(last->get_header_value("Content-Type"), "video/mp4", row);
        std::set<Json> connections;
        const Json trace = sandbox.json("/_control/trace");
        for (const Json &request : trace["requests"])
            connections.insert(request["peer"]);
        COMPARE3(connections.size(), 2u, row);
        COMPARE3(Upload(sandbox, upload.content).about["isUploaded"], true, row);
    }
}

void UploadTest::whatIsStoredOutlivesTheProcess()
{
    const QTemporaryDir folder;
    std::set<std::string> targets;
    const auto start = [&](auto steps) {
        const Sandbox sandbox(
            {u"--storage"_s, folder.filePath(u"made"_s)}); // the one before was killed
        Upload upload(sandbox, contentOf(2 * partSize + 7));
        targets.insert(upload.target(1));
        steps(upload);
        COMPARE3(sandbox.control("reset"), 200, "leaves a folder that was given alone");
    };
    start([](Upload &upload) { VERIFY3(upload.put(1) == 200 && upload.put(3) == 200, ""); });
    start([](Upload &upload) {
        VERIFY3(!upload.about["isUploaded"] && !upload.join(3), "part 2 is missing");
        VERIFY3(upload.check("3")["isUploaded"] && !upload.check("2")["isUploaded"], "goes on");
        upload.put(upload.target(2), std::string(partSize, 'x'), upload.check("2"));
        VERIFY3(!upload.join(3), "wrong content");
        const Json permit = upload.check("1");
        COMPARE3(upload.put(upload.target(1), "x", permit), 200, "had been dropped");
        upload.put(upload.target(1), upload.content.substr(0, partSize), permit);
        VERIFY3(upload.put(3) == 200 && upload.put(2) == 200 && !upload.join(2), "wrong count");
        VERIFY3(upload.join(3) && upload.join(3), "an answer may be lost");
    });
    start([](Upload &up) { VERIFY3(up.about["isUploaded"] && up.object() == up.content, ""); });
    COMPARE3(targets.size(), 1u, "the same upload all the time");
}

void UploadTest::aPermissionIsGoodForWhatItWasGivenForOnly()
{
    const Sandbox sandbox;
    Upload upload(sandbox, contentOf(10));
    const Json good = upload.check("1");
    Json early = good, forged = good;
    forged["authorization"] = "SANDBOX " + std::string(32, '0');
    early["date"] = "Tue, 01 Jul 2025 08:00:00 GMT";
    const std::string video = "video/mp4", mine = upload.target(1);
    const std::tuple<std::string, std::string, Json, std::string> rows[] {
        {"nothing", mine, Json::object(), video}, {"forged", mine, forged, video},
        {"date", mine, early, video}, {"type", mine, good, "image/jpeg"},
        {"part", upload.target(2), good, video},
        {"object", Upload(sandbox, "other").target(1), good, video}};
    for (const auto &[what, target, permit, type] : rows)
        COMPARE3(upload.put(target, "x", permit, type), 403, what);
    VERIFY3(!upload.has(1) && !upload.has(2), "");
    const std::string large(4 * partSize, 'x');
    COMPARE3(upload.put(upload.target(2), large, upload.check("2")), 413, "too large");
    COMPARE3(upload.put(mine, upload.content, good), 200, "the connection bore it all");
    for (const std::string number : {"", "0", "-1", "1x", "10001", "99999999999"})
        COMPARE3(upload.check(number)["isError"], true, number);
}

void UploadTest::faultsSpoilThePartTheyAreFor()
{
    const std::tuple<std::string, int, bool> rows[] {{R"("lose":true)", 0, true},
        {R"("status":204)", 204, true}, {R"("status":500,"unhandled":true)", 500, false},
        {R"("half_body":true)", 0, false}, {R"("half_body":true,"delay_ms":600000)", 0, false},
        {R"("delay_ms":600000)", 0, true}};
    for (const auto &[fault, status, stored] : rows) {
        const Sandbox sandbox;
        Upload upload(sandbox, contentOf(3 * partSize));
        sandbox.control("faults", R"({"method":"PUT","params":{"partNumber":2},)" + fault + "}");
        upload.storage.set_read_timeout(status == 0 ? 1 : 10);
        upload.storage.set_write_timeout(status == 0 ? 1 : 10);
        COMPARE3(upload.put(2), status, fault);
        COMPARE3(upload.has(2), stored, fault);
        Upload again(sandbox, upload.content);
        COMPARE3(again.put(2), stored ? 403 : 200, "used up; no permit for what is there");
        VERIFY3(again.put(1) == 200 && again.put(3) == 200 && again.join(3), fault);
    }
    const Sandbox sandbox;
    sandbox.control("faults",
        R"({"host":"upload","skip":1,"headers":{"Content-Type":"text/html"},"body":"<html>"})");
    Upload upload(sandbox, "x");
    VERIFY3(upload.check("1").is_discarded() && upload.check("1").is_object(), "HTML");
}

QTEST_GUILESS_MAIN(UploadTest)
#include "UploadTest.moc"
