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
    void linksGoWhereTheyBelong_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("hasFrame");
        QTest::addColumn<QString>("opened"); // with a blank between them
        QTest::addColumn<bool>("loadedHere");
        QTest::addColumn<bool>("followed"); // by the engine itself
        const QString chat = u"mqq://im/chat?chat_type=wpa&uin=4711&version=1&src_type=web"_s;
        const auto row = [](const char *name, const QString &url, bool hasFrame,
                             const QString &opened, bool loadedHere, bool followed) {
            QTest::newRow(name) << url << hasFrame << opened << loadedHere << followed;
        };
        row("page", u"https://h.example/MQQ"_s, true, {}, false, true);
        row("new window", u"https://h.example/a"_s, false, {}, true, true);
        row("chat in the query", u"https://h.example/?next=mqqapi"_s, true, chat, false, true);
        row("chat in a new window", u"https://h.example/mqq"_s, false, chat, false, true);
        row("chat before telephone", u"tel:123?mqq"_s, true, chat, false, false);
        row("telephone", u"tel:+86%2010"_s, false, u"telprompt:+86%2010 tel:+86%2010"_s, false,
            false);
        row("another program", u"weixin://dl"_s, true, {}, false, false);
        row("a file", u"file:///etc/passwd"_s, true, {}, false, false);
        row("the bridge", u"https://__bridge_loaded__"_s, true, {}, false, false);
        row("the older bridge", u"wvjbscheme://__BRIDGE_LOADED__"_s, true, {}, false, false);
    }

    void linksGoWhereTheyBelong()
    {
        QFETCH(const QString, url);
        QFETCH(const bool, hasFrame);
        QFETCH(const bool, loadedHere);
        using Frame = NavigationPolicy::TargetFrame;
        const auto policy
            = NavigationPolicy::decide(QUrl(url), hasFrame ? Frame::Some : Frame::None, u"4711"_s);
        QStringList links;
        for (const QUrl &link : policy.openInSystem)
            links << link.toString(QUrl::FullyEncoded);
        QTEST(links.join(u' '), "opened");
        QCOMPARE(policy.loadInThisView, loadedHere);
        QTEST(EngineNavigation::mayFollow(QUrl(url)), "followed");
    }

    void theMarkerIsTheHeadersLastAndItsPagesAlone()
    {
        QCOMPARE(CookieHeader::value({}), u" rblgin=1"_s);
        const QList known {QNetworkCookie("a", "1"), QNetworkCookie("b", "")};
        QCOMPARE(CookieHeader::value(known), u"a=1;b=; rblgin=1"_s);
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

    void textsForPagesStandAsTheyExpectThem();

    void trustIsByOrigin()
    {
        const QString one = u"https://p.example"_s;
        QVERIFY2(BridgeTrust({}).serves(u"http://x"_s), "none is configured");
        QVERIFY(BridgeTrust({one}).serves(one));
        QVERIFY(BridgeTrust({u"https://p.example:443/"_s}).serves(one));
        for (const QString &other : {u"http://p.example"_s, u"https://p.example:8443"_s,
                 u"https://p.example.evil"_s, u"null"_s})
            QVERIFY2(!BridgeTrust({one}).serves(other), qPrintable(other));
    }
};

// Pages take these texts as they stand, oddities included.
void WebPolicyTest::textsForPagesStandAsTheyExpectThem()
{
    const QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    LoginModel login(&defaults);
    login.setC_id(u"cid"_s);
    login.setTerminalCDN(u"t"_s);
    login.setRbCDN(u"r"_s);
    login.setBaseCDN(u"b"_s);
    login.setRegisterCDN(u"g"_s);
    // Not escaped, and an inserted "%@" is no place for a value.
    login.setQeCDN(u"q\"%@"_s);
    QCOMPARE(AppInfo::text(login, u"uuid"_s),
        R"x({"im_type" : 1, "app_type" : 1, "dev_type" : 1, "regId": "cid", )x"
        R"x("site_id": "(null)", "client_code": "uuid", "terminal_cdn": "t", "rb_cdn": "r", )x"
        R"x("base_cdn": "b", "register_cdn": "g", "zzrb_cdn": "(null)", "qe_cdn": "q"%@"})x"_L1);
    login.setIsLocal(true);
    for (const auto &[local, built] : {std::pair {u"http://h/qe/x"_s, u"http://h/x"_s},
             {u"http://h/qe/x/qe/y"_s, u"http://h/x/"_s}, {u"http://h/x"_s, QString()}}) {
        login.setLocalUrl(local);
        QCOMPARE(AppInfo::requestUrl(login, u"https://p.example/"_s), built);
    }
    QCOMPARE(PageScripts::setJumpUrl(), u"window.localStorage.setItem(app-jump-url,/mine)"_s);
    QCOMPARE(PageScripts::imageSourceAt({12.5, 300}),
        u"document.elementFromPoint(12.500000, 300.000000).src"_s);
}

QTEST_GUILESS_MAIN(WebPolicyTest)
#include "WebPolicyTest.moc"
