#include "web/profiles/WebCookieStore.h"

#include "platform/storage/HTTPCookieStorage.h"
#include "web/profiles/CookieHeader.h"

#include <QWebEngineCookieStore>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QUrl originOf(const QNetworkCookie &cookie)
{
    QUrl origin;
    origin.setScheme(cookie.isSecure() ? u"https"_s : u"http"_s);
    origin.setHost(cookie.domain().startsWith(u'.') ? cookie.domain().mid(1) : cookie.domain());
    origin.setPath(cookie.path());
    return origin;
}

}

WebCookieStore::WebCookieStore(
    HTTPCookieStorage *storage, QWebEngineCookieStore *engine, Direction direction)
    : m_storage(storage)
    , m_engine(engine)
    , m_direction(direction)
{
    if (direction == Direction::Both) {
        connect(m_engine, &QWebEngineCookieStore::cookieAdded, this, &WebCookieStore::cookieAdded);
        connect(
            m_engine, &QWebEngineCookieStore::cookieRemoved, this, &WebCookieStore::cookieRemoved);
    }
    connect(
        m_storage, &HTTPCookieStorage::cookieRemoved, this, [this](const QNetworkCookie &cookie) {
            if (!m_mirroring)
                m_engine->deleteCookie(cookie, originOf(cookie));
        });
}

void WebCookieStore::copyStorage()
{
    for (const QNetworkCookie &cookie : m_storage->cookies())
        setInEngine(cookie);
}

void WebCookieStore::setInEngine(const QNetworkCookie &cookie)
{
    if (m_direction == Direction::Both)
        m_echoes << cookie;
    QNetworkCookie set = cookie;
    // With a domain named, the engine would send a cookie of one host to its subdomains too.
    if (!cookie.domain().startsWith(u'.'))
        set.setDomain({});
    m_engine->setCookie(set, originOf(cookie));
}

void WebCookieStore::leave()
{
    m_hasLeft = true;
}

void WebCookieStore::comeBack()
{
    m_hasLeft = false;
}

void WebCookieStore::sendWithNextLoad(const QString &cookieHeader, const QUrl &page)
{
    endLoad();
    copyStorage();
    m_oneLoad = CookieHeader::beyond(m_storage->cookiesForUrl(page), cookieHeader, page);
    m_oneLoadPage = page;
    for (const QNetworkCookie &cookie : std::as_const(m_oneLoad))
        m_engine->setCookie(cookie, page);
}

void WebCookieStore::endLoad()
{
    if (m_oneLoadPage.isEmpty())
        return;
    for (const QNetworkCookie &cookie : std::as_const(m_oneLoad))
        m_engine->deleteCookie(cookie, m_oneLoadPage);
    m_oneLoadPage.clear();
}

bool WebCookieStore::isForOneLoad(const QNetworkCookie &cookie) const
{
    return std::any_of(m_oneLoad.cbegin(), m_oneLoad.cend(), [&cookie](const QNetworkCookie &own) {
        return own.name() == cookie.name() && own.path() == cookie.path();
    });
}

void WebCookieStore::cookieAdded(const QNetworkCookie &cookie)
{
    if (isForOneLoad(cookie))
        return;
    const auto echo
        = std::find_if(m_echoes.begin(), m_echoes.end(), [&cookie](const QNetworkCookie &set) {
              return set.hasSameIdentifier(cookie) && set.value() == cookie.value();
          });
    if (echo != m_echoes.end())
        m_echoes.erase(echo);
    else if (!m_hasLeft)
        m_storage->setCookie(cookie);
}

void WebCookieStore::cookieRemoved(const QNetworkCookie &cookie)
{
    // The engine reports a removal before it reports the value that takes the old one's place.
    const bool isReplacedByUs = std::any_of(m_echoes.cbegin(), m_echoes.cend(),
        [&cookie](const QNetworkCookie &set) { return set.hasSameIdentifier(cookie); });
    if (isForOneLoad(cookie) || isReplacedByUs || m_hasLeft)
        return;
    m_mirroring = true;
    m_storage->removeCookie(cookie);
    m_mirroring = false;
}
