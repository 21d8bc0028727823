#include "session/SsoCookies.h"

#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/UserDefaults.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QUrl portal(QStringLiteral("https://rb.example/school01/portal/"));
const QUrl subdomain(QStringLiteral("https://sub.rb.example/"));
const QString savedKey = QStringLiteral("vantCookies");

}

class SsoCookiesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        restart();
    }

    void bringsTheSessionBackAfterARestart()
    {
        receive("mo=host only; Path=/; HttpOnly; Secure");
        receive("tmo=of the domain; Path=/; Domain=rb.example; Max-Age=900");
        receive("route=1; Path=/");
        m_cookies->handleCookie();
        const QList<QNetworkCookie> before = m_storage->cookiesForUrl(portal);

        restart();
        m_cookies->configCookies();
        QCOMPARE(sentTo(portal), (QByteArrayList {"mo=host only", "tmo=of the domain"}));
        QCOMPARE(sentTo(subdomain), QByteArrayList {"tmo=of the domain"});
        for (const QNetworkCookie &cookie : m_storage->cookies())
            QVERIFY2(before.contains(cookie), cookie.toRawForm());
    }

    void leavesALiveSessionAlone()
    {
        const QByteArrayList old {"mo=old", "tmo=old"};
        const std::pair<QByteArray, QByteArrayList> rows[] {
            {"tmo=new", {"tmo=new"}},
            {"mo=new", {"mo=new"}},
            {"mo=new; Path=/x", {"mo=new"}},
            {"MO=new", {"MO=new", "mo=old", "tmo=old"}},
            {"mo=; Expires=Thu, 01 Jan 1970 00:00:00 GMT", old},
            {"", old},
        };
        for (const auto &[header, after] : rows) {
            init();
            receive("mo=old");
            receive("tmo=old");
            m_cookies->handleCookie();
            restart();
            receive(header);
            m_cookies->configCookies();
            QCOMPARE(live(), after);
        }
    }

    void restoresNothingFromABrokenList()
    {
        const QVariantMap nameless {{u"Value"_s, u"1"_s}};
        const QVariantMap another {{u"Name"_s, u"route"_s}, {u"Domain"_s, u"rb.example"_s}};
        for (const QVariant &stored : {QVariant(u"mo=1"_s), QVariant(QVariantList {u"mo"_s, 5}),
                 QVariant(QVariantList {nameless, another})}) {
            m_defaults->setObject(stored, savedKey);
            m_cookies->configCookies();
            QCOMPARE(live(), {});
        }
    }

    void clearsWhatItSays()
    {
        const QByteArrayList others {"MO=3", "mo2=4"};
        for (const char *header : {"mo=1; Path=/", "tmo=2; Path=/a", "MO=3; Path=/", "mo2=4"})
            receive(header, QUrl(u"https://rb.example/a/b"_s));
        m_cookies->handleCookie();
        QCOMPARE(saved().size(), 2);
        m_cookies->clearCookies();
        QCOMPARE(live(), others);
        QVERIFY(!m_defaults->objectForKey(savedKey).isValid());

        // A list of none replaces the saved one, and is a list.
        m_cookies->handleCookie();
        restart();
        QVERIFY(m_defaults->objectForKey(savedKey).isValid());
        QCOMPARE(saved(), {});
    }

private:
    void restart()
    {
        m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.ini"_s));
        m_storage = std::make_unique<HTTPCookieStorage>(m_folder->filePath(u"cookies.json"_s));
        m_cookies = std::make_unique<SsoCookies>(m_storage.get(), m_defaults.get());
    }

    void receive(const QByteArray &header, const QUrl &from = portal)
    {
        m_storage->setCookiesFromUrl(QNetworkCookie::parseCookies(header), from);
    }

    static QByteArrayList pairs(const QList<QNetworkCookie> &cookies)
    {
        QByteArrayList pairs;
        for (const QNetworkCookie &cookie : cookies)
            pairs << cookie.toRawForm(QNetworkCookie::NameAndValueOnly);
        std::sort(pairs.begin(), pairs.end());
        return pairs;
    }

    QByteArrayList live() const { return pairs(m_storage->cookies()); }
    QByteArrayList sentTo(const QUrl &url) const { return pairs(m_storage->cookiesForUrl(url)); }
    QVariantList saved() const { return m_defaults->objectForKey(savedKey).toList(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<HTTPCookieStorage> m_storage;
    std::unique_ptr<SsoCookies> m_cookies;
};

QTEST_GUILESS_MAIN(SsoCookiesTest)
#include "SsoCookiesTest.moc"
