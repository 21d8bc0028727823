#include "upload/protocol/UploadCalls.h"

#include "model/StringFormat.h"
#include "net/request/JsonFragment.h"
#include "net/request/LogMask.h"
#include "platform/http/HTTPSessionManager.h"
#include "upload/Logging.h"

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds serviceTimeout {5};
constexpr qint64 largestAnswer = 1024 * 1024;
constexpr int storedStatus = 200;

HTTPSessionManager serviceManager(HTTPNetwork *network)
{
    HTTPSessionManager manager(network);
    manager.setAcceptableContentTypes({"text/html", "text/plain", "text/json", "application/json"});
    manager.setTimeoutInterval(serviceTimeout);
    manager.setMaximumBodySize(largestAnswer);
    return manager;
}

std::optional<QJsonObject> objectIn(const QByteArray &body)
{
    const auto value = JsonFragment::parse(body);
    if (!value || !value->isObject()) {
        qCDebug(lcUpload).noquote() << "no object:" << QString::fromUtf8(body);
        return std::nullopt;
    }
    const QJsonObject answer = value->toObject();
    qCDebug(lcUpload).noquote() << StringFormat::description(LogMask::answer(answer));
    return answer;
}

}

UploadCalls::UploadCalls(HTTPNetwork *network)
    : m_network(network)
{
}

UploadCalls::~UploadCalls()
{
    for (const QPointer<HTTPTask> &task : std::as_const(m_tasks)) {
        if (task)
            task->cancel();
    }
}

void UploadCalls::post(const QString &address, const HTTPParameters &parameters, Answered answered)
{
    const QPointer alive(this);
    track(serviceManager(m_network).POST(
        address, parameters,
        [alive, answered](const HTTPResponse &response) {
            if (alive)
                answered(objectIn(response.body));
        },
        [alive, answered](const HTTPResponse &, const HTTPError &error) {
            if (!alive)
                return;
            qCDebug(lcUpload).noquote() << error.description;
            answered(std::nullopt);
        }));
}

void UploadCalls::put(
    const QString &address, const Headers &headers, const QByteArray &data, Stored stored)
{
    HTTPSessionManager manager(m_network);
    for (const auto &[field, value] : headers)
        manager.setValueForHTTPHeaderField(value, field);
    const QPointer alive(this);
    const auto answered = [alive, stored](const HTTPResponse &response) {
        if (alive)
            stored(response.statusCode == storedStatus);
    };
    track(manager.PUT(
        address, data, answered, [answered](const HTTPResponse &response, const HTTPError &error) {
            qCDebug(lcUpload).noquote() << error.description;
            answered(response);
        }));
}

void UploadCalls::track(HTTPTask *task)
{
    m_tasks.removeIf([](const QPointer<HTTPTask> &ended) { return !ended; });
    m_tasks.append(task);
}
