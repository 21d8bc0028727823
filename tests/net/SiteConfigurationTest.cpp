#include "net/NetClient.h"
#include "net/OMShareGlobalInfo.h"
#include "net/OMShareUserInfo.h"
#include "net/SiteConfiguration.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QJsonArray>

//! What the site's answer, and the stores that other versions of the program read, leave on disk.
class SiteConfigurationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void storesTheAddressesAndForgetsAMissingOne();
    void failureLeavesTheAddressesAlone();
    void storesKeepTheirKeys();

private:
    struct Loaded
    {
        int status = 0;
        QList<DataModel> rows;
        std::optional<ResponseErrorInfo> error;
    };

    Loaded load();
    //! In the order in which the server names them: terminal, rb, base, register, zzrb, qe.
    QStringList addresses() const;

    PlatformProcess m_platform;
    std::unique_ptr<NetClient> m_client;
};

void SiteConfigurationTest::initTestCase()
{
    QVERIFY(m_platform.isRunning());
}

void SiteConfigurationTest::init()
{
    m_platform.reset();
    m_client = std::make_unique<NetClient>(m_platform.hosts());
}

SiteConfigurationTest::Loaded SiteConfigurationTest::load()
{
    Loaded loaded;
    const SiteConfiguration configuration(&m_client->requests, &m_client->loginModel);
    configuration.load([&](int status, const QList<DataModel> &rows, const auto &error) {
        loaded = {status, rows, error};
    });
    [&] { TRY_VERIFY(loaded.status != 0); }();
    return loaded;
}

QStringList SiteConfigurationTest::addresses() const
{
    const LoginModel &model = m_client->loginModel;
    return {model.terminalCDN(), model.rbCDN(), model.baseCDN(), model.registerCDN(),
        model.zzrbCDN(), model.qeCDN()};
}

void SiteConfigurationTest::storesTheAddressesAndForgetsAMissingOne()
{
    QVERIFY(load().rows.size() >= 3'000);
    const QString content = m_platform.address(PlatformProcess::Content);
    QCOMPARE(addresses(),
        (QStringList {content + u"terminal/"_qs, content + u"rb/"_qs, content + u"base/"_qs,
            content + u"register/"_qs, content + u"zzrb/"_qs, content + u"qe/"_qs}));
    const QJsonArray list {
        QJsonObject {{u"full_name"_qs, u"一中"_qs}, {u"site_code"_qs, 12}, {u"is_local"_qs, 1},
            {u"url"_qs, u"http://u"_qs}, {u"url_qe"_qs, u"http://q"_qs}, {u"site_id"_qs, 10001}},
        u"no school"_qs, QJsonValue::Null,
        QJsonObject {{u"full_name"_qs, u"二中"_qs}, {u"url"_qs, QJsonValue::Null}}};
    m_platform.setAnswer({{u"start"_qs, u"cndSite"_qs},
        {u"data"_qs,
            QJsonObject {{u"terminal_cdn"_qs, u"t"_qs}, {u"rb_cdn"_qs, QJsonValue::Null},
                {u"base_cdn"_qs, QJsonArray {1}}, {u"list"_qs, list}}}});

    QCOMPARE(load().rows,
        (QList<DataModel> {
            {u"一中"_qs, u"12"_qs, true, u"http://u"_qs, u"http://q"_qs, u"10001"_qs},
            {u"二中"_qs, {}, false, {}, {}, {}}}));
    QCOMPARE(addresses(), (QStringList {u"t"_qs, {}, {}, {}, {}, {}}));
    QVERIFY(m_client->loginModel.qeCDN().isNull());
}

void SiteConfigurationTest::failureLeavesTheAddressesAlone()
{
    load();
    const QStringList before = addresses();
    const struct
    {
        QString body;
        int status;
        QString text;
    } rows[] {
        {R"({"code":500,"msg":"维护中"})", 1, u"维护中"_qs},
        {R"({"code":8888,"data":{}})", 8888, {}},
        {R"({"code":200,"data":{"rb_cdn":"x)", 1, u"请求错误"_qs},
        {R"({"code":200})", 1, u"请求错误"_qs},
        {R"({"code":200,"data":[]})", 1, u"请求错误"_qs},
    };
    for (const auto &[body, status, text] : rows) {
        m_platform.addFault({{u"start"_qs, u"cndSite"_qs}, {u"body"_qs, body}});
        const Loaded loaded = load();
        QCOMPARE(loaded.status, status);
        QCOMPARE(loaded.error ? loaded.error->errorDescription : QString(), text);
        QVERIFY(loaded.rows.isEmpty());
        QCOMPARE(addresses(), before);
    }
}

void SiteConfigurationTest::storesKeepTheirKeys()
{
    OMShareGlobalInfo global(&m_client->defaults);
    global.httpCookieParam.ckClientId = u"stale"_qs;
    global.loadHttpCookieParam();
    QVERIFY(global.dicHttpCookieParam().isEmpty());
    global.httpCookieParam = {u"s=1; 中"_qs, u"JSESSION"_qs, u"c-9"_qs};
    global.saveHttpCookieParam();
    OMShareUserInfo(&m_client->defaults).setUser_id(u"7"_qs);
    OMShareUserInfo(&m_client->defaults).setIsLogin(true);

    UserDefaults restarted(m_client->folder.filePath(u"settings.ini"_qs));
    QCOMPARE(restarted.stringForKey(u"user_id"_qs), u"7"_qs);
    QVERIFY(restarted.boolForKey(u"isLogin"_qs) && !restarted.boolForKey(u"isLoginForST"_qs));
    QCOMPARE(restarted.objectForKey(u"k_HttpCookieParam"_qs).toMap(),
        (QVariantMap {{u"SSO_COOKIE"_qs, u"s=1; 中"_qs},
            {u"_SESSIONID_COOKIE_NAME"_qs, u"JSESSION"_qs}, {u"ck_ClientId"_qs, u"c-9"_qs}}));
    OMShareGlobalInfo read(&restarted);
    read.loadHttpCookieParam();
    QCOMPARE(read.httpCookieParam, global.httpCookieParam);
}

QTEST_GUILESS_MAIN(SiteConfigurationTest)
#include "SiteConfigurationTest.moc"
