#include "platform/http/HTTPTask.h"

#include "platform/http/TcpNoDelay.h"

#include <QNetworkReply>

namespace {

constexpr int firstSuccessStatus = 200;
constexpr int lastSuccessStatus = 299;
// The transport's own numbers end below 500.
constexpr int unacceptableStatus = 1001;
constexpr int unacceptableContentType = 1002;
constexpr int bodyTooLarge = 1003;

QByteArray mimeTypeOf(const HTTPResponse &response)
{
    const QByteArray type = response.header("Content-Type");
    return type.split(';').constFirst().trimmed().toLower();
}

}

HTTPTask::HTTPTask(
    QNetworkReply *reply, const HTTPLimits &limits, HTTPSuccess success, HTTPFailure failure)
    : QObject(reply->manager())
    , m_reply(reply)
    , m_limits(limits)
    , m_success(std::move(success))
    , m_failure(std::move(failure))
{
    m_reply->setParent(this);
    connect(m_reply, &QNetworkReply::uploadProgress, this, &HTTPTask::uploadProgress);
    connect(m_reply, &QNetworkReply::readyRead, this, &HTTPTask::receive);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HTTPTask::checkAnnouncedSize);
    // Later than the start of the connection, which may wait for the host's address.
    connect(m_reply, &QNetworkReply::socketStartedConnecting, this, [this] {
        connect(m_reply, &QNetworkReply::requestSent, this, &TcpNoDelay::apply,
            Qt::ConnectionType(Qt::AutoConnection | Qt::SingleShotConnection));
    });
    // Queued: a reply that fails at once must not answer before the caller holds the task.
    connect(m_reply, &QNetworkReply::finished, this, &HTTPTask::finish, Qt::QueuedConnection);
    connect(m_reply, &QNetworkReply::uploadProgress, this, &HTTPTask::awaitMore);
    awaitMore();
}

// The toolkit's own timer costs each request as much as all else that is done here.
void HTTPTask::awaitMore()
{
    m_silence.start(int(m_limits.silence.count()), this);
}

void HTTPTask::timerEvent(QTimerEvent *)
{
    m_silence.stop();
    cancel();
}

void HTTPTask::cancel()
{
    m_reply->abort();
}

void HTTPTask::checkAnnouncedSize()
{
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_limits.bodySize)
        refuseBody();
}

void HTTPTask::receive()
{
    awaitMore();
    readBody();
}

void HTTPTask::readBody()
{
    m_body += m_reply->readAll();
    if (m_body.size() > m_limits.bodySize)
        refuseBody();
}

void HTTPTask::refuseBody()
{
    m_bodyIsTooLarge = true;
    m_reply->abort();
}

HTTPError HTTPTask::errorOf(const HTTPResponse &response) const
{
    const bool refused = response.statusCode != 0
        && (response.statusCode < firstSuccessStatus || response.statusCode > lastSuccessStatus);
    if (refused)
        return {unacceptableStatus, QStringLiteral("status %1").arg(response.statusCode)};
    if (m_bodyIsTooLarge)
        return {bodyTooLarge, QStringLiteral("body above %1 bytes").arg(m_limits.bodySize)};
    if (m_reply->error() != QNetworkReply::NoError)
        return {int(m_reply->error()), m_reply->errorString()};
    if (!m_limits.contentTypes.isEmpty() && !response.body.isEmpty()
        && !m_limits.contentTypes.contains(mimeTypeOf(response)))
        return {unacceptableContentType,
            QStringLiteral("content type %1")
                .arg(QString::fromLatin1(response.header("Content-Type")))};
    return {};
}

void HTTPTask::finish()
{
    m_silence.stop();
    if (m_reply->isOpen())
        readBody();
    HTTPResponse response {
        m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), {}, {}};
    for (const auto &[name, value] : m_reply->rawHeaderPairs()) {
        if (!value.contains('\n')) {
            response.headers.append({name, value});
            continue;
        }
        // The toolkit joins cookies by line ends.
        for (const QByteArray &single : value.split('\n'))
            response.headers.append({name, single});
    }
    response.body = std::move(m_body);

    const HTTPError error = errorOf(response);
    deleteLater();
    if (error.code == 0)
        m_success(response);
    else
        m_failure(response, error);
}
