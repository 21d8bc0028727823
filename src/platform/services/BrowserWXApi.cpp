#include "platform/services/BrowserWXApi.h"

#include "platform/Logging.h"
#include "platform/desktop/UrlOpener.h"
#include "platform/desktop/UrlSchemeHandler.h"
#include "platform/storage/UserDefaults.h"

#include <QRandomGenerator>
#include <QUrlQuery>

#include <array>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds patience = 10min;
const QString callbackName = QStringLiteral("oauth");
const QString requestKey = QStringLiteral("WechatAuthRequest");
const QString nonceName = QStringLiteral("nonce");
const QString stateName = QStringLiteral("state");
const QString askedName = QStringLiteral("asked");

//! 128 bits from the system's source, as 32 hexadecimal digits.
QString makeNonce()
{
    std::array<quint32, 4> bits;
    QRandomGenerator::system()->fillRange(bits.data(), qsizetype(bits.size()));
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char *>(bits.data()), sizeof bits).toHex());
}

}

BrowserWXApi::BrowserWXApi(UrlOpener *urlOpener, UrlSchemeHandler *callbacks,
    UserDefaults *defaults, const QString &authoriseUrl, Clock clock)
    : m_urlOpener(urlOpener)
    , m_callbacks(callbacks)
    , m_defaults(defaults)
    , m_authoriseUrl(authoriseUrl)
    , m_clock(std::move(clock))
{
}

bool BrowserWXApi::registerApp(const QString &appId, const QString &universalLink)
{
    m_appId = appId;
    m_universalLink = QUrl(universalLink);
    if (appId.isEmpty())
        qCInfo(lcPlatform) << "WeChat authorisation is not set up";
    if (const auto kept = pendingRequest(); kept && !isTimely(*kept))
        cancelPendingRequest();
    return !appId.isEmpty();
}

bool BrowserWXApi::sendAuthReq(const QString &scope, const QString &state)
{
    if (m_appId.isEmpty() || !m_authoriseUrl.isValid() || m_authoriseUrl.isRelative())
        return false;
    if (m_callbacks)
        m_callbacks->registerScheme(m_appId);
    const Request request {makeNonce(), state, m_clock()};
    // Before the browser opens: its answer may come to another process.
    keep(request);
    const QString callback
        = u"%1://%2?%3=%4"_s.arg(m_appId, callbackName, nonceName, request.nonce);
    QUrlQuery query(m_authoriseUrl);
    for (const auto &[name, value] : {std::pair(u"appid"_s, m_appId), {u"redirect_uri"_s, callback},
             {u"response_type"_s, u"code"_s}, {u"scope"_s, scope}, {stateName, state}})
        query.addQueryItem(name, QString::fromLatin1(QUrl::toPercentEncoding(value)));
    QUrl page = m_authoriseUrl;
    page.setQuery(query);
    if (m_urlOpener->openURL(page))
        return true;
    cancelPendingRequest();
    return false;
}

void BrowserWXApi::cancelPendingRequest()
{
    m_defaults->removeObjectForKey(requestKey);
    m_defaults->synchronize();
}

bool BrowserWXApi::handleOpenURL(const QUrl &url)
{
    if (m_appId.isEmpty() || url.scheme().compare(m_appId, Qt::CaseInsensitive) != 0
        || url.host() != callbackName)
        return false;
    return takeAnswer(url);
}

bool BrowserWXApi::handleOpenUniversalLink(const QUrl &link)
{
    if (m_appId.isEmpty() || m_universalLink.isEmpty() || link.scheme() != m_universalLink.scheme()
        || link.authority() != m_universalLink.authority()
        || link.path() != m_universalLink.path() + m_appId + u'/' + callbackName)
        return false;
    return takeAnswer(link);
}

bool BrowserWXApi::takeAnswer(const QUrl &url)
{
    const QUrlQuery query(url);
    const auto value
        = [&query](const QString &name) { return query.queryItemValue(name, QUrl::FullyDecoded); };
    const auto asked = pendingRequest();
    if (!asked || asked->nonce.isEmpty() || value(nonceName) != asked->nonce) {
        qCWarning(lcPlatform) << "an authorisation came that nobody has asked for";
        return false;
    }
    cancelPendingRequest();
    const bool isGood = value(stateName) == asked->state && isTimely(*asked);
    Q_EMIT onResp({isGood ? value(u"code"_s) : QString(), asked->state});
    return true;
}

std::optional<BrowserWXApi::Request> BrowserWXApi::pendingRequest() const
{
    const QVariantMap kept = m_defaults->objectForKey(requestKey).toMap();
    if (kept.isEmpty())
        return {};
    return Request {
        kept[nonceName].toString(), kept[stateName].toString(), kept[askedName].toDateTime()};
}

void BrowserWXApi::keep(const Request &request)
{
    m_defaults->setObject(QVariantMap {{nonceName, request.nonce}, {stateName, request.state},
                              {askedName, request.asked}},
        requestKey);
    m_defaults->synchronize();
}

// In both directions: the device's clock may have been set meanwhile.
bool BrowserWXApi::isTimely(const Request &request) const
{
    return request.asked.isValid() && std::abs(request.asked.msecsTo(m_clock())) < patience.count();
}
