#include "app/start/SandboxProcess.h"

#include "app/start/ConfigurationFile.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/http/HTTPSessionManager.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <sys/prctl.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr int startTimeoutMs = 10'000;
constexpr int endTimeoutMs = 2'000;

QString sandboxPath()
{
    const QString named = qEnvironmentVariable("VANT_SANDBOX");
    return named.isEmpty() ? QCoreApplication::applicationDirPath() + u"/vant-sandbox"_s : named;
}

}

SandboxProcess::~SandboxProcess()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(endTimeoutMs))
        m_process.kill();
    m_process.waitForFinished(endTimeoutMs);
}

std::variant<DeploymentConfiguration, QString> SandboxProcess::start()
{
    // A client that is killed cannot end its child any more; the system does.
    m_process.setChildProcessModifier([parent = ::getpid()] {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        // Killed before the system knew.
        if (::getppid() != parent)
            ::_exit(EXIT_FAILURE);
    });
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(sandboxPath(), {});
    while (!m_process.canReadLine()) {
        if (m_process.waitForReadyRead(startTimeoutMs))
            continue;
        const bool ended = m_process.state() == QProcess::NotRunning
            && m_process.error() != QProcess::FailedToStart;
        return u"the school platform %1 does not start: %2"_s.arg(sandboxPath(),
            ended ? u"it ended with code %1"_s.arg(m_process.exitCode()) : m_process.errorString());
    }
    const QString base = QString::fromUtf8(m_process.readLine()).trimmed();

    HTTPNetwork network;
    HTTPSessionManager manager(&network);
    manager.setTimeoutInterval(std::chrono::milliseconds(startTimeoutMs));
    QEventLoop loop;
    HTTPResponse answer;
    HTTPError problem;
    manager.GET(
        base + u"/deployment.toml"_s, {},
        [&](const HTTPResponse &response) {
            answer = response;
            loop.quit();
        },
        [&](const HTTPResponse &, const HTTPError &error) {
            problem = error;
            loop.quit();
        });
    loop.exec();
    if (problem.code != 0)
        return u"the school platform at \"%1\" does not answer: %2"_s.arg(
            base, problem.description);
    return ConfigurationFile::parse(answer.body, base + u"/deployment.toml"_s);
}
