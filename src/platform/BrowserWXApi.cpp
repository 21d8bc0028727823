#include "platform/BrowserWXApi.h"

#include "platform/Logging.h"
#include "platform/UrlOpener.h"
#include "platform/UrlSchemeHandler.h"

#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString callbackName = QStringLiteral("oauth");

}

BrowserWXApi::BrowserWXApi(
    UrlOpener *urlOpener, UrlSchemeHandler *callbacks, const QString &authoriseUrl)
    : m_urlOpener(urlOpener)
    , m_callbacks(callbacks)
    , m_authoriseUrl(authoriseUrl)
{
}

bool BrowserWXApi::registerApp(const QString &appId, const QString &universalLink)
{
    m_appId = appId;
    m_universalLink = QUrl(universalLink);
    if (appId.isEmpty())
        qCInfo(lcPlatform) << "WeChat authorisation is not set up";
    return !appId.isEmpty();
}

bool BrowserWXApi::sendAuthReq(const QString &scope, const QString &state)
{
    if (m_appId.isEmpty() || !m_authoriseUrl.isValid() || m_authoriseUrl.isRelative())
        return false;
    if (m_callbacks)
        m_callbacks->registerScheme(m_appId);
    QUrlQuery query(m_authoriseUrl);
    for (const auto &[name, value] :
        {std::pair(u"appid"_s, m_appId), {u"redirect_uri"_s, m_appId + u"://"_s + callbackName},
            {u"response_type"_s, u"code"_s}, {u"scope"_s, scope}, {u"state"_s, state}})
        query.addQueryItem(name, QString::fromLatin1(QUrl::toPercentEncoding(value)));
    QUrl page = m_authoriseUrl;
    page.setQuery(query);
    return m_urlOpener->openURL(page);
}

bool BrowserWXApi::handleOpenURL(const QUrl &url)
{
    if (m_appId.isEmpty() || url.scheme().compare(m_appId, Qt::CaseInsensitive) != 0
        || url.host() != callbackName)
        return false;
    takeAnswer(url);
    return true;
}

bool BrowserWXApi::handleOpenUniversalLink(const QUrl &link)
{
    if (m_appId.isEmpty() || m_universalLink.isEmpty() || link.scheme() != m_universalLink.scheme()
        || link.authority() != m_universalLink.authority()
        || link.path() != m_universalLink.path() + m_appId + u'/' + callbackName)
        return false;
    takeAnswer(link);
    return true;
}

void BrowserWXApi::takeAnswer(const QUrl &url)
{
    const QUrlQuery query(url);
    const auto value
        = [&query](const QString &name) { return query.queryItemValue(name, QUrl::FullyDecoded); };
    const SendAuthResp response {value(u"code"_s), value(u"state"_s)};
    // A refusal has no code, and may come again.
    if (!response.code.isEmpty() && std::exchange(m_lastCode, response.code) == response.code)
        return;
    Q_EMIT onResp(response);
}
