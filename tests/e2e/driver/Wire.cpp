#include "e2e/driver/Wire.h"

#include "e2e/driver/StepFailed.h"

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
    m_mark = trace(0)[u"next"].toInt();
}

QList<TracedRequest> Wire::requests()
{
    QList<TracedRequest> requests;
    const QJsonArray entries = trace(m_mark)[u"requests"].toArray();
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
    post(u"/_control/faults"_s, fault);
}

void Wire::push(const QString &page)
{
    QString device;
    for (const QJsonValue &entry : trace(0)[u"requests"].toArray()) {
        const QString bound = TracedRequest::fromJson(entry.toObject()).value(u"c_id"_s);
        if (!bound.isEmpty())
            device = bound;
    }
    if (device.isEmpty())
        throw StepFailed {u"no device was bound to a user"_s};
    post(u"/_control/push"_s,
        {{u"to"_s, device}, {u"title"_s, u"新通知"_s}, {u"body"_s, u"请查看今天的作业"_s},
            {u"payload"_s, address(page).toString()}});
}

void Wire::setNotices(const QString &ad, const QString &update)
{
    post(u"/_control/notices"_s, {{u"ad"_s, ad}, {u"update"_s, update}});
}

void Wire::post(const QString &path, const QJsonObject &body)
{
    QNetworkRequest request(address(path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    finished(m_network.post(request, QJsonDocument(body).toJson()));
}

QByteArray Wire::get(const QString &path)
{
    return finished(m_network.get(QNetworkRequest(address(path))));
}

QJsonObject Wire::trace(int since)
{
    return QJsonDocument::fromJson(get(u"/_control/trace?since=%1"_s.arg(since))).object();
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
