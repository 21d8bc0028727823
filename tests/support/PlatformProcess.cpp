#include "support/PlatformProcess.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QUrl>

#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int timeout = 20'000;

}

PlatformProcess::PlatformProcess(const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // A test that crashes must not leave the platform behind.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start(
        qEnvironmentVariable("VANT_SANDBOX"), QStringList {u"--port"_qs, u"0"_qs} + arguments);
    while (!m_process.canReadLine() && m_process.waitForReadyRead(timeout)) { }
    m_port = QUrl(QString::fromUtf8(m_process.readLine()).trimmed()).port(0);
    if (m_port == 0)
        qFatal("the sandbox did not start: %s", qPrintable(m_process.errorString()));
}

PlatformProcess::~PlatformProcess()
{
    m_process.terminate();
    if (!m_process.waitForFinished(timeout)) {
        m_process.kill();
        m_process.waitForFinished(timeout);
    }
}

QString PlatformProcess::authority(Host host) const
{
    return u"127.0.0.%1:%2"_qs.arg(int(host)).arg(m_port);
}

QString PlatformProcess::address(Host host) const
{
    return (host == Tls ? u"https://%1/"_qs : u"http://%1/"_qs).arg(authority(host));
}

DeploymentConfiguration::Hosts PlatformProcess::hosts() const
{
    return {address(Regions), address(Rb), address(Public), address(Base), address(Rb),
        address(Official), address(Content)};
}

QList<TracedRequest> PlatformProcess::takeRequests()
{
    const QJsonObject answer
        = QJsonDocument::fromJson(control(u"_control/trace?since=%1"_qs.arg(m_taken))).object();
    m_taken = answer[u"next"].toInt();
    QList<TracedRequest> requests;
    for (const QJsonValue &entry : answer[u"requests"].toArray())
        requests << TracedRequest::fromJson(entry.toObject());
    return requests;
}

void PlatformProcess::addFault(const QJsonObject &fault)
{
    control(u"_control/faults"_qs, QJsonDocument(fault).toJson());
}

void PlatformProcess::setAnswer(const QJsonObject &answer)
{
    control(u"_control/settings"_qs, QJsonDocument(answer).toJson());
}

void PlatformProcess::reset()
{
    control(u"_control/reset"_qs, "{}");
    m_taken = 0;
}

QByteArray PlatformProcess::control(const QString &path, const QByteArray &body) const
{
    QNetworkRequest request(QUrl(address(Rb) + path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_qs);
    const std::unique_ptr<QNetworkReply> reply(
        body.isNull() ? m_network.get(request) : m_network.post(request, body));
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    const QByteArray answer = reply->readAll();
    // A test that goes on without its fault would pass for the wrong reason.
    if (reply->error() != QNetworkReply::NoError)
        qFatal("the sandbox refused %s: %s", qPrintable(path), answer.constData());
    return answer;
}
