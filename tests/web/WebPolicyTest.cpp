#include "support/Table.h"
#include "web/bridge/BridgeTrust.h"
#include "web/engine/EngineNavigation.h"
#include "web/engine/NavigationPolicy.h"
#include "web/engine/PageZoom.h"
#include "web/secondary/PageAddress.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Target = NavigationPolicy::Target;

//! The pure decisions about pages.
class WebPolicyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linksGoWhereTheyBelong_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<Target>("target");
        QTest::addColumn<QString>("opened"); // with a blank between them
        QTest::addColumn<bool>("loadedHere");
        QTest::addColumn<bool>("followed"); // by the engine itself
        const QString chat = u"mqq://im/chat?chat_type=wpa&uin=4711&version=1&src_type=web"_s;
        const QString call = u"telprompt:+86%2010 tel:+86%2010"_s;
        const auto row = [](const char *name, const QString &url, Target target,
                             const QString &opened, bool loadedHere, bool followed) {
            QTest::newRow(name) << url << target << opened << loadedHere << followed;
        };
        using enum Target;
        row("page", u"https://h.example/MQQ"_s, MainFrame, {}, false, true);
        row("new window", u"https://h.example/a"_s, NewWindow, {}, true, true);
        row("unasked window", u"https://h.example/a"_s, UnaskedWindow, {}, true, true);
        row("chat in the query", u"https://h.example/?next=mqqapi"_s, MainFrame, chat, false, true);
        row("chat in a new window", u"https://h.example/mqq"_s, NewWindow, chat, false, true);
        row("chat in a frame", u"https://h.example/mqq"_s, Subframe, {}, false, true);
        row("chat before telephone", u"tel:123?mqq"_s, MainFrame, chat, false, false);
        row("telephone", u"tel:+86%2010"_s, MainFrame, call, false, false);
        row("telephone, touched", u"tel:+86%2010"_s, NewWindow, call, false, false);
        row("telephone in a frame", u"tel:+86%2010"_s, Subframe, {}, false, false);
        row("telephone, unasked", u"tel:+86%2010"_s, UnaskedWindow, {}, false, false);
        row("another program", u"weixin://dl"_s, MainFrame, {}, false, false);
        row("a file", u"file:///etc/passwd"_s, MainFrame, {}, false, false);
        row("the bridge", u"https://__bridge_loaded__"_s, MainFrame, {}, false, false);
        row("the older bridge", u"wvjbscheme://__BRIDGE_LOADED__"_s, MainFrame, {}, false, false);
    }

    void linksGoWhereTheyBelong()
    {
        QFETCH(const QString, url);
        QFETCH(const Target, target);
        QFETCH(const bool, loadedHere);
        const auto policy = NavigationPolicy::decide(QUrl(url), target, u"4711"_s);
        QStringList links;
        for (const QUrl &link : policy.openInSystem)
            links << link.toString(QUrl::FullyEncoded);
        QTEST(links.join(u' '), "opened");
        QCOMPARE(policy.loadInThisView, loadedHere);
        QTEST(EngineNavigation::mayFollow(QUrl(url)), "followed");
    }

    void pagesAreAsLargeAsTheyFit_data()
    {
        Table<double, double, QString, double>::rows({
            {"as it is", 390, 1, {}, 1},
            {"larger text on a desk", 1280, 1.5, {}, 1.5},
            {"larger text on a phone", 400, 2, u"width=device-width"_s, 1.25},
            {"larger text, no room", 300, 2, {}, 1},
            {"smaller text", 390, 0.8, {}, 1},
            {"a page too wide", 375, 1, u"user-scalable=no;WIDTH = 750"_s, 0.5},
            {"a page too wide, larger text", 375, 3, u"width=750"_s, 0.5},
            {"a wide page on a desk", 1500, 1.5, u"width=750"_s, 1.5},
            {"a narrow page", 390, 1, u"width=320,initial-scale=1"_s, 1},
            {"wider than the engine can", 390, 1, u"width=99999"_s, 0.25},
            {"no width", 390, 1, u"width=0, min-width=750"_s, 1},
        });
    }

    void pagesAreAsLargeAsTheyFit()
    {
        const auto [width, textScale, viewport, factor]
            = Table<double, double, QString, double>::row();
        QCOMPARE(PageZoom::factor(width, textScale, viewport), factor);
    }

    void trustIsByOrigin()
    {
        const QString one = u"https://p.example"_s;
        const QUrl shown(u"https://p.example/page?q#f"_s);
        QVERIFY2(BridgeTrust({}).serves(u"null"_s, {}), "none is configured");
        QVERIFY(BridgeTrust({one}).serves(one, shown));
        QVERIFY(BridgeTrust({u"https://p.example:443/"_s}).serves(one, shown));
        QVERIFY(BridgeTrust({one}).serves(one, QUrl(u"blob:https://p.example/1-2"_s)));
        for (const QString &other : {u"http://p.example"_s, u"https://p.example:8443"_s,
                 u"https://p.example.evil"_s, u"null"_s})
            QVERIFY2(!BridgeTrust({one}).serves(other, shown), qPrintable(other));
        for (const QString &address : {u"https://x.example/"_s, u"http://p.example/"_s,
                 u"about:blank"_s, u"data:,"_s, u"blob:https://x.example/1"_s, QString()})
            QVERIFY2(!BridgeTrust({one}).serves(one, QUrl(address)), qPrintable(address));
    }

    void escapesAddresses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("escaped");
        QTest::addColumn<QByteArray>("fourteen");
        const auto row = [](const char *text, const char *escaped, const char *fourteen) {
            QTest::addRow("%s", text) << u"http://h/"_s + QString::fromUtf8(text)
                                      << "http://h/"_ba + escaped << "http://h/"_ba + fourteen;
        };
        row("a b{1}", "a%20b%7B1%7D", "a%20b%7B1%7D");
        row("a%20b", "a%20b", "a%2520b");
        row("50%", "50%25", "50%25");
        row("?q=学&r=\"x\"#top", "?q=%E5%AD%A6&r=%22x%22#top", "?q=%E5%AD%A6&r=%22x%22%23top");
        row("`^|\\<>", "%60%5E%7C%5C%3C%3E", "%60%5E%7C%5C%3C%3E");
        row("?a[1]=;,+@!~", "?a[1]=;,+@!~", "?a%5B1%5D=;,+@!~");
    }

    void escapesAddresses()
    {
        QFETCH(const QString, text);
        QTEST(PageAddress::escaped(text).toEncoded(), "escaped");
        QTEST(PageAddress::withFourteenEscaped(text).toEncoded(), "fourteen");
    }
};

QTEST_GUILESS_MAIN(WebPolicyTest)
#include "WebPolicyTest.moc"
