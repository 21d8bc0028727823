#include "e2e/Wire.h"

#include "e2e/StepFailed.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkReply>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int answerTimeoutMs = 5'000;

}

Wire::Wire(const QUrl &platform)
    : m_platform(platform)
{
    m_network.setTransferTimeout(answerTimeoutMs);
    mark();
}

void Wire::mark()
{
    m_mark = trace()[u"next"].toInt();
}

QList<TracedRequest> Wire::requests()
{
    QList<TracedRequest> requests;
    const QJsonArray entries = trace()[u"requests"].toArray();
    for (const QJsonValue &entry : entries)
        requests << TracedRequest::fromJson(entry.toObject());
    return requests;
}

QList<TracedRequest> Wire::requests(const Matches &matches)
{
    QList<TracedRequest> all = requests();
    all.removeIf([&](const TracedRequest &request) { return !matches(request); });
    return all;
}

void Wire::spoil(const QJsonObject &fault)
{
    QNetworkRequest request(m_platform.resolved(QUrl(u"/_control/faults"_s)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    finished(m_network.post(request, QJsonDocument(fault).toJson()));
}

QByteArray Wire::get(const QString &path)
{
    return finished(m_network.get(QNetworkRequest(m_platform.resolved(QUrl(path)))));
}

QJsonObject Wire::trace()
{
    return QJsonDocument::fromJson(get(u"/_control/trace?since=%1"_s.arg(m_mark))).object();
}

QByteArray Wire::finished(QNetworkReply *reply)
{
    const std::unique_ptr<QNetworkReply> owner(reply);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    if (reply->error() != QNetworkReply::NoError)
        throw StepFailed {u"the school platform does not answer: %1"_s.arg(reply->errorString())};
    return reply->readAll();
}

Wire::Matches isCall(const QString &start)
{
    return [start](const TracedRequest &request) { return request.value(u"start"_s) == start; };
}

Wire::Matches isPath(const QString &path)
{
    return [path](const TracedRequest &request) { return request.path == path; };
}

QStringList cookiesOf(const TracedRequest &request)
{
    QStringList cookies = request.headers.value(u"cookie"_s).split(u';', Qt::SkipEmptyParts);
    for (QString &cookie : cookies)
        cookie = cookie.trimmed();
    return cookies;
}

bool hasCookie(const TracedRequest &request, const QString &name)
{
    const QStringList cookies = cookiesOf(request);
    return std::any_of(cookies.begin(), cookies.end(),
        [&](const QString &cookie) { return cookie.startsWith(name + u'='); });
}
