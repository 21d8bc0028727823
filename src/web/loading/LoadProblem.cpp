#include "web/loading/LoadProblem.h"

#include <QWebEngineLoadingInfo>

using namespace Qt::StringLiterals;

namespace {

// The engine's numbers for what its domains do not tell apart.
constexpr int timedOut = -7;
constexpr int nameNotResolved = -105;
constexpr int nameResolutionFailed = -137;
constexpr int disconnected = -106;
constexpr int connectionTimedOut = -118;
constexpr int emptyResponse = -324;

}

LoadProblem LoadProblem::ofEngine(int domain, int code)
{
    if (code == disconnected)
        return {u"没有网络连接"_s, true};
    if (code == timedOut || code == connectionTimedOut || code == emptyResponse)
        return noAnswer();
    switch (domain) {
    case QWebEngineLoadingInfo::DnsErrorDomain:
        return {u"找不到服务器"_s, true};
    case QWebEngineLoadingInfo::CertificateErrorDomain:
        return {u"服务器的证书不可信"_s, false};
    case QWebEngineLoadingInfo::ConnectionErrorDomain:
        // The engine counts names that are not found among these.
        return {code == nameNotResolved || code == nameResolutionFailed ? u"找不到服务器"_s
                                                                        : u"无法连接服务器"_s,
            true};
    default:
        return {u"服务器的回应无法显示（%1）"_s.arg(code), false};
    }
}

LoadProblem LoadProblem::ofStatus(int status)
{
    return {u"服务器错误 %1"_s.arg(status), false};
}

LoadProblem LoadProblem::noAnswer()
{
    return {u"服务器没有回应"_s, true};
}

LoadProblem LoadProblem::diesAgainAndAgain()
{
    return {u"页面多次意外退出"_s, false};
}
