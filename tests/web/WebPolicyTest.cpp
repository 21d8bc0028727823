#include "model/LoginModel.h"
#include "web/AppInfo.h"
#include "web/BridgeTrust.h"
#include "web/CookieHeader.h"
#include "web/EngineNavigation.h"
#include "web/NavigationPolicy.h"
#include "web/PageScripts.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

//! The pure decisions of the home container.
class WebPolicyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linksGoWhereTheyBelong_data();
    void linksGoWhereTheyBelong();
    void theEngineFollowsOnlyWhatItShows_data();
    void theEngineFollowsOnlyWhatItShows();
    void theCookieHeaderEndsInTheMarker_data();
    void theCookieHeaderEndsInTheMarker();
    void theMarkerBelongsToItsPageAlone();
    void theRequestUrlComesFromTheSite_data();
    void theRequestUrlComesFromTheSite();
    void theAppInfoIsTextAsThePagesExpectIt();
    void trustIsByOrigin_data();
    void trustIsByOrigin();
    void scriptsStandAsThePortalKnowsThem();
};

void WebPolicyTest::linksGoWhereTheyBelong_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("hasFrame");
    QTest::addColumn<QStringList>("opened");
    QTest::addColumn<bool>("loadedHere");

    const QStringList chat {u"mqq://im/chat?chat_type=wpa&uin=4711&version=1&src_type=web"_s};
    const auto row = [](const char *name, const QString &url, bool hasFrame,
                         const QStringList &opened, bool loadedHere) {
        QTest::newRow(name) << url << hasFrame << opened << loadedHere;
    };
    row("page", u"https://h.example/a"_s, true, {}, false);
    row("new window", u"https://h.example/a"_s, false, {}, true);
    row("chat", u"mqq://im/chat?uin=1"_s, true, chat, false);
    row("chat in the host", u"https://mqq.example/"_s, true, chat, false);
    row("chat in the query", u"https://h.example/?next=mqqapi"_s, true, chat, false);
    row("chat in a new window", u"https://h.example/mqq"_s, false, chat, false);
    row("chat before telephone", u"tel:123?mqq"_s, true, chat, false);
    row("telephone", u"tel:10086"_s, true, {u"telprompt:10086"_s, u"tel:10086"_s}, false);
    row("telephone with plus", u"tel:+86%2010"_s, false,
        {u"telprompt:+86%2010"_s, u"tel:+86%2010"_s}, false);
    row("other case is no chat", u"https://h.example/MQQ"_s, true, {}, false);
}

void WebPolicyTest::linksGoWhereTheyBelong()
{
    QFETCH(QString, url);
    QFETCH(bool, hasFrame);
    QFETCH(QStringList, opened);
    QFETCH(bool, loadedHere);
    const auto policy = NavigationPolicy::decide(QUrl(url),
        hasFrame ? NavigationPolicy::TargetFrame::Some : NavigationPolicy::TargetFrame::None,
        u"4711"_s);
    QStringList links;
    for (const QUrl &link : policy.openInSystem)
        links << link.toString(QUrl::FullyEncoded);
    QCOMPARE(links, opened);
    QCOMPARE(policy.loadInThisView, loadedHere);
}

void WebPolicyTest::theEngineFollowsOnlyWhatItShows_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("follows");
    QTest::newRow("page") << u"https://h.example/"_s << true;
    QTest::newRow("empty document") << u"about:blank"_s << true;
    QTest::newRow("document in its address") << u"data:text/html,x"_s << true;
    QTest::newRow("telephone") << u"tel:1"_s << false;
    QTest::newRow("another program") << u"weixin://dl"_s << false;
    QTest::newRow("a file of the device") << u"file:///etc/passwd"_s << false;
    QTest::newRow("asking for the bridge") << u"https://__bridge_loaded__"_s << false;
    QTest::newRow("asking the older way") << u"wvjbscheme://__BRIDGE_LOADED__"_s << false;
}

void WebPolicyTest::theEngineFollowsOnlyWhatItShows()
{
    QFETCH(QString, url);
    QTEST(EngineNavigation::mayFollow(QUrl(url)), "follows");
}

void WebPolicyTest::theCookieHeaderEndsInTheMarker_data()
{
    QTest::addColumn<QList<QNetworkCookie>>("cookies");
    QTest::addColumn<QString>("value");
    QTest::newRow("none") << QList<QNetworkCookie>() << u" rblgin=1"_s;
    QTest::newRow("two") << QList {QNetworkCookie("a", "1"), QNetworkCookie("b", "2")} << u"a=1;b=2; rblgin=1"_s;
    QTest::newRow("empty value") << QList {QNetworkCookie("a", "")} << u"a=; rblgin=1"_s;
}

void WebPolicyTest::theCookieHeaderEndsInTheMarker()
{
    QFETCH(QList<QNetworkCookie>, cookies);
    QTEST(CookieHeader::value(cookies), "value");
}

void WebPolicyTest::theMarkerBelongsToItsPageAlone()
{
    const QList known {QNetworkCookie("a", "1")};
    const auto own = [&known](const QString &page) {
        return CookieHeader::beyond(known, CookieHeader::value(known), QUrl(page));
    };
    const QList<QNetworkCookie> made = own(u"https://h.example/portal/首页?x=1"_s);
    QCOMPARE(made.size(), 1);
    QCOMPARE(made[0].toRawForm(QNetworkCookie::NameAndValueOnly), "rblgin=1");
    QCOMPARE(made[0].path(), u"/portal/%E9%A6%96%E9%A1%B5"_s);
    QVERIFY(made[0].isHttpOnly() && made[0].isSecure() && made[0].isSessionCookie());
    QCOMPARE(own(u"http://h.example"_s).constFirst().path(), u"/"_s);
}

void WebPolicyTest::theRequestUrlComesFromTheSite_data()
{
    QTest::addColumn<bool>("isLocal");
    QTest::addColumn<QString>("localUrl");
    QTest::addColumn<QString>("url"); // null: no answer
    QTest::newRow("platform") << false << u"http://h/qe/"_s << u"https://p.example/school01"_s;
    QTest::newRow("local") << true << u"http://h/qe/x"_s << u"http://h/x"_s;
    QTest::newRow("later pieces are dropped") << true << u"http://h/qe/x/qe/y"_s << u"http://h/x/"_s;
    QTest::newRow("no segment") << true << u"http://h/x"_s << QString();
    QTest::newRow("no address") << true << QString() << QString();
}

void WebPolicyTest::theRequestUrlComesFromTheSite()
{
    QFETCH(bool, isLocal);
    QFETCH(QString, localUrl);
    QFETCH(QString, url);
    const QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    LoginModel login(&defaults);
    login.setSiteCode(u"school01"_s);
    login.setIsLocal(isLocal);
    login.setLocalUrl(localUrl);
    const QString built = AppInfo::requestUrl(login, u"https://p.example/"_s);
    QCOMPARE(built, url);
    QCOMPARE(built.isNull(), url.isNull());
}

void WebPolicyTest::theAppInfoIsTextAsThePagesExpectIt()
{
    const QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    LoginModel login(&defaults);
    QCOMPARE(AppInfo::text(login, {}),
        R"x({"im_type" : 1, "app_type" : 1, "dev_type" : 1, "regId": "(null)", "site_id": "(null)", "client_code": "(null)", "terminal_cdn": "(null)", "rb_cdn": "(null)", "base_cdn": "(null)", "register_cdn": "(null)", "zzrb_cdn": "(null)", "qe_cdn": "(null)"})x"_L1);
    login.setC_id(u"cid"_s);
    login.userModel = UserModel();
    login.userModel->site_id = u"7"_s;
    login.setTerminalCDN(u"t"_s);
    login.setRbCDN(u"r"_s);
    login.setBaseCDN(u"b"_s);
    login.setRegisterCDN(u"g"_s);
    login.setZzrbCDN(u"z"_s);
    login.setQeCDN(u"q\"%@"_s);
    // Not escaped, and an inserted "%@" is no place for a value.
    QCOMPARE(AppInfo::text(login, u"uuid"_s),
        R"x({"im_type" : 1, "app_type" : 1, "dev_type" : 1, "regId": "cid", "site_id": "7", "client_code": "uuid", "terminal_cdn": "t", "rb_cdn": "r", "base_cdn": "b", "register_cdn": "g", "zzrb_cdn": "z", "qe_cdn": "q"%@"})x"_L1);
}

void WebPolicyTest::trustIsByOrigin_data()
{
    QTest::addColumn<QStringList>("trusted");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("claimed");
    QTest::addColumn<bool>("served");
    const QStringList one {u"https://p.example"_s};
    const QStringList withPath {u"https://p.example/"_s};
    QTest::newRow("none configured") << QStringList() << u"http://x/"_s << u"http://x"_s << true;
    QTest::newRow("trusted") << one << u"https://p.example/a?b#c"_s << u"https://p.example"_s << true;
    QTest::newRow("written with a slash") << withPath << u"https://p.example/a"_s << u"https://p.example"_s << true;
    QTest::newRow("usual port written out")
        << QStringList {u"https://p.example:443"_s} << u"https://p.example/a"_s
        << u"https://p.example"_s << true;
    QTest::newRow("other scheme") << one << u"http://p.example/"_s << u"http://p.example"_s << false;
    QTest::newRow("other port") << one << u"https://p.example:8443/"_s << u"https://p.example:8443"_s << false;
    QTest::newRow("longer host") << one << u"https://p.example.evil/"_s << u"https://p.example.evil"_s << false;
    QTest::newRow("only claimed") << one << u"https://evil.example/"_s << u"https://p.example"_s << false;
    QTest::newRow("not yet gone") << one << u"https://p.example/"_s << u"https://evil.example"_s << false;
    QTest::newRow("opaque") << one << u"https://p.example/"_s << u"null"_s << false;
}

void WebPolicyTest::trustIsByOrigin()
{
    QFETCH(QStringList, trusted);
    QFETCH(QString, page);
    QFETCH(QString, claimed);
    QTEST(BridgeTrust(trusted).serves(QUrl(page), claimed), "served");
}

void WebPolicyTest::scriptsStandAsThePortalKnowsThem()
{
    QCOMPARE(PageScripts::setJumpUrl(), u"window.localStorage.setItem(app-jump-url,/mine)"_s);
    QCOMPARE(PageScripts::imageSourceAt({12.5, 300}),
        u"document.elementFromPoint(12.500000, 300.000000).src"_s);
}

QTEST_GUILESS_MAIN(WebPolicyTest)
#include "WebPolicyTest.moc"
