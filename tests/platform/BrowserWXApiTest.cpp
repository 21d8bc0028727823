#include "platform/services/BrowserWXApi.h"
#include "platform/storage/UserDefaults.h"
#include "support/NotedUrlOpener.h"
#include "support/Table.h"

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
    using Urls = Table<QString, QString>;
    using Changes = Table<std::function<void()>, QString>;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    NotedUrlOpener m_browser;
    QDateTime m_now;
    std::unique_ptr<BrowserWXApi> m_api;
    QStringList m_answers;

    // As a start of the client does.
    void start()
    {
        m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.ini"_s));
        m_api = std::make_unique<BrowserWXApi>(&m_browser, nullptr, m_defaults.get(),
            u"https://open.example/authorise?lang=zh"_s, [this] { return m_now; });
        QVERIFY(m_api->registerApp(appId, u"https://u.example/app/"_s));
        connect(m_api.get(), &WXApi::onResp, this, [this](const SendAuthResp &response) {
            m_answers << response.code + u' ' + response.state;
        });
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
        m_answers.clear();
        start();
    }

    void takesTheAnswerToWhatWasAsked_data()
    {
        const QString app = appId + u"://"_s, link = u"https://u.example/app/"_s + appId;
        const QString right = u"nonce=NUMBER&code=a&state=123"_s, none;
        // NUMBER: of the request, HALF: of its digits. What is answered; none: it is not taken.
        Urls::rows({
            {"agreed", app + u"oauth?nonce=NUMBER&code=a%26b&state=123"_s, u"a&b 123"_s},
            {"refused", app + u"oauth?nonce=NUMBER&state=123"_s, u" 123"_s},
            {"another state", app + u"oauth?nonce=NUMBER&code=a&state=8888"_s, u" 123"_s},
            {"link", link + u"/oauth?"_s + right, u"a 123"_s},
            {"no number", app + u"oauth?code=a&state=123"_s, none},
            {"empty number", app + u"oauth?nonce=&code=a&state=123"_s, none},
            {"half of it", app + u"oauth?nonce=HALF&code=a&state=123"_s, none},
            {"more than it", app + u"oauth?nonce=NUMBERa&code=a&state=123"_s, none},
            {"nothing", app + u"oauth"_s, none},
            {"another's", u"wx1://oauth?"_s + right, none},
            {"another matter", app + u"pay?"_s + right, none},
            {"foreign link", u"https://u.example.cn/app/"_s + appId + u"/oauth?"_s + right, none},
        });
    }

    void takesTheAnswerToWhatWasAsked()
    {
        const auto [url, answer] = Urls::row();
        QVERIFY(m_api->sendAuthReq(u"snsapi_userinfo"_s, u"123"_s));
        const QString nonce = askedNonce();
        QCOMPARE(nonce.size(), 32);
        const QUrl callback(
            QString(url).replace(u"NUMBER"_s, nonce).replace(u"HALF"_s, nonce.left(16)));
        const auto deliver = [&] {
            return m_api->handleOpenURL(callback) || m_api->handleOpenUniversalLink(callback);
        };
        const bool taken = deliver();
        QCOMPARE(taken, !m_answers.isEmpty());
        QCOMPARE(m_answers.value(0), answer);
        QVERIFY2(!deliver(), "taken once");
        // What is no answer leaves the true one its right.
        const QUrl truth(appId + u"://oauth?nonce=%1&code=a&state=123"_s.arg(nonce));
        QCOMPARE(m_api->handleOpenURL(truth), !taken);
    }

    void takesAnswersAsLongAsTheyAreWanted_data()
    {
        const auto pass = [this](int seconds) { m_now = m_now.addSecs(seconds); };
        Changes::rows({
            {"in time", [=] { pass(599); }, u"a 123"_s},
            {"too late", [=] { pass(600); }, u" 123"_s},
            {"before it was asked", [=] { pass(-600); }, u" 123"_s},
            {"taken back", [this] { m_api->cancelPendingRequest(); }, {}},
            {"asked again", [this] { m_api->sendAuthReq(u"snsapi_userinfo"_s, u"8888"_s); }, {}},
            {"started anew", [this] { start(); }, u"a 123"_s},
            {"started anew too late",
                [=, this] {
                    pass(24 * 3600);
                    start();
                    pass(-24 * 3600);
                },
                {}},
        });
    }

    void takesAnswersAsLongAsTheyAreWanted()
    {
        const auto [meanwhile, answer] = Changes::row();
        m_api->sendAuthReq(u"snsapi_userinfo"_s, u"123"_s);
        const QUrl callback(appId + u"://oauth?nonce=%1&code=a&state=123"_s.arg(askedNonce()));
        meanwhile();
        QCOMPARE(m_api->handleOpenURL(callback), !answer.isNull());
        QCOMPARE(m_answers.value(0), answer);
    }
};

QTEST_GUILESS_MAIN(BrowserWXApiTest)
#include "BrowserWXApiTest.moc"
