#include "platform/services/BrowserWXApi.h"
#include "platform/storage/UserDefaults.h"
#include "support/NotedUrlOpener.h"

#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString appId = u"wx3f5a9c2e7b1d4068"_s;

}

//! Which callback of the authorisation page counts as an answer.
class BrowserWXApiTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    NotedUrlOpener m_browser;
    QDateTime m_now;
    std::unique_ptr<BrowserWXApi> m_api;

    // As a start of the client does.
    void start()
    {
        m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.ini"_s));
        m_api = std::make_unique<BrowserWXApi>(&m_browser, nullptr, m_defaults.get(),
            u"https://open.example/authorise?lang=zh"_s, [this] { return m_now; });
        QVERIFY(m_api->registerApp(appId, u"https://u.example/app/"_s));
    }

    QString askedNonce() const
    {
        const QUrlQuery asked(m_browser.opened.constLast());
        const QUrl callback(asked.queryItemValue(u"redirect_uri"_s, QUrl::FullyDecoded));
        return QUrlQuery(callback).queryItemValue(u"nonce"_s);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_now = QDateTime::currentDateTimeUtc();
        m_browser.opened.clear();
        start();
    }

    void takesTheAnswerToWhatWasAsked_data()
    {
        QTest::addColumn<QString>("url"); // NUMBER: of the request
        QTest::addColumn<QString>("answer"); // null: not taken
        const QString app = appId + u"://"_s, link = u"https://u.example/app/"_s + appId;
        QTest::newRow("agreed") << app + u"oauth?nonce=NUMBER&code=a%26b&state=123"_s
                                << u"a&b 123"_s;
        QTest::newRow("refused") << app + u"oauth?nonce=NUMBER&state=123"_s << u" 123"_s;
        QTest::newRow("another state")
            << app + u"oauth?nonce=NUMBER&code=a&state=8888"_s << u" 123"_s;
        QTest::newRow("link") << link + u"/oauth?nonce=NUMBER&code=a&state=123"_s << u"a 123"_s;
        QTest::newRow("no number") << app + u"oauth?code=a&state=123"_s << QString();
        QTest::newRow("empty number") << app + u"oauth?nonce=&code=a&state=123"_s << QString();
        QTest::newRow("half of it") << app + u"oauth?nonce=HALF&code=a&state=123"_s << QString();
        QTest::newRow("more than it")
            << app + u"oauth?nonce=NUMBERa&code=a&state=123"_s << QString();
        QTest::newRow("nothing") << app + u"oauth"_s << QString();
        QTest::newRow("another's") << u"wx1://oauth?nonce=NUMBER&code=a&state=123"_s << QString();
        QTest::newRow("another matter")
            << app + u"pay?nonce=NUMBER&code=a&state=123"_s << QString();
        QTest::newRow("foreign link")
            << u"https://u.example.cn/app/"_s + appId + u"/oauth?nonce=NUMBER&code=a&state=123"_s
            << QString();
    }

    void takesTheAnswerToWhatWasAsked()
    {
        QFETCH(const QString, url);
        QStringList answers;
        connect(m_api.get(), &WXApi::onResp, this, [&](const SendAuthResp &response) {
            answers << response.code + u' ' + response.state;
        });
        QVERIFY(m_api->sendAuthReq(u"snsapi_userinfo"_s, u"123"_s));
        const QString nonce = askedNonce();
        QCOMPARE(nonce.size(), 32);
        const QUrl callback(
            QString(url).replace(u"NUMBER"_s, nonce).replace(u"HALF"_s, nonce.left(16)));
        const auto deliver = [&] {
            return m_api->handleOpenURL(callback) || m_api->handleOpenUniversalLink(callback);
        };
        const bool taken = deliver();
        QCOMPARE(taken, !answers.isEmpty());
        QTEST(answers.value(0), "answer");
        QVERIFY2(!deliver(), "taken once");
        // What is no answer leaves the true one its right.
        const QUrl truth(appId + u"://oauth?nonce=%1&code=a&state=123"_s.arg(nonce));
        QCOMPARE(m_api->handleOpenURL(truth), !taken);
    }

    void takesAnswersAsLongAsTheyAreWanted_data()
    {
        using Change = std::function<void(BrowserWXApiTest &)>;
        using Self = BrowserWXApiTest;
        QTest::addColumn<Change>("meanwhile");
        QTest::addColumn<QString>("answer");
        const auto row = [](const char *name, const Change &change, const QString &answer) {
            QTest::newRow(name) << change << answer;
        };
        row(
            "in time", [](Self &test) { test.m_now = test.m_now.addSecs(599); }, u"a 123"_s);
        row(
            "too late", [](Self &test) { test.m_now = test.m_now.addSecs(600); }, u" 123"_s);
        row(
            "before it was asked", [](Self &test) { test.m_now = test.m_now.addSecs(-600); },
            u" 123"_s);
        row(
            "taken back", [](Self &test) { test.m_api->cancelPendingRequest(); }, QString());
        row(
            "asked again",
            [](Self &test) { test.m_api->sendAuthReq(u"snsapi_userinfo"_s, u"8888"_s); },
            QString());
        row(
            "started anew", [](Self &test) { test.start(); }, u"a 123"_s);
        row(
            "started anew too late",
            [](Self &test) {
                test.m_now = test.m_now.addDays(1);
                test.start();
                test.m_now = test.m_now.addDays(-1);
            },
            QString());
    }

    void takesAnswersAsLongAsTheyAreWanted()
    {
        QFETCH(const std::function<void(BrowserWXApiTest &)>, meanwhile);
        m_api->sendAuthReq(u"snsapi_userinfo"_s, u"123"_s);
        const QUrl answer(appId + u"://oauth?nonce=%1&code=a&state=123"_s.arg(askedNonce()));
        meanwhile(*this);
        QString told;
        connect(m_api.get(), &WXApi::onResp, this, [&told](const SendAuthResp &response) {
            told = response.code + u' ' + response.state;
        });
        const bool taken = m_api->handleOpenURL(answer);
        QCOMPARE(taken, !told.isNull());
        QTEST(told, "answer");
    }
};

QTEST_GUILESS_MAIN(BrowserWXApiTest)
#include "BrowserWXApiTest.moc"
