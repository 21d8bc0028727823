#include "net/NetClient.h"
#include "net/SiteConfiguration.h"
#include "support/SandboxProcess.h"

#include <QJsonArray>
#include <QTest>

class SiteConfigurationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void storesTheAddressesAndHandsOverTheSchools();
    void readsRowsOfMixedTypes();
    void missingAddressIsForgotten();
    void emptyListStillStoresTheAddresses();
    void failureLeavesTheAddressesAlone_data();
    void failureLeavesTheAddressesAlone();

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

    SandboxProcess m_sandbox;
    std::unique_ptr<NetClient> m_client;
};

void SiteConfigurationTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

void SiteConfigurationTest::init()
{
    m_sandbox.reset();
    m_client = std::make_unique<NetClient>(m_sandbox.hosts());
}

SiteConfigurationTest::Loaded SiteConfigurationTest::load()
{
    Loaded loaded;
    const SiteConfiguration configuration(&m_client->requests, &m_client->loginModel);
    configuration.load([&](int status, const QList<DataModel> &rows, const auto &error) {
        loaded = {status, rows, error};
    });
    [&] { QTRY_VERIFY(loaded.status != 0); }();
    return loaded;
}

QStringList SiteConfigurationTest::addresses() const
{
    const LoginModel &model = m_client->loginModel;
    return {model.terminalCDN(), model.rbCDN(), model.baseCDN(), model.registerCDN(),
        model.zzrbCDN(), model.qeCDN()};
}

void SiteConfigurationTest::storesTheAddressesAndHandsOverTheSchools()
{
    const Loaded loaded = load();

    QCOMPARE(loaded.status, 200);
    QVERIFY(!loaded.error);
    const QString content = m_sandbox.address(SandboxProcess::Content);
    QCOMPARE(addresses(),
        (QStringList {content + u"terminal/"_qs, content + u"rb/"_qs, content + u"base/"_qs,
            content + u"register/"_qs, content + u"zzrb/"_qs, content + u"qe/"_qs}));

    QVERIFY(loaded.rows.size() >= 3'000);
    QCOMPARE(loaded.rows.first().aName, u"厦门实验小学"_qs);
    QCOMPARE(loaded.rows.first().aSiteCode, u"school01"_qs);
    QVERIFY(!loaded.rows.first().isLocal);
    const auto local = std::find_if(loaded.rows.begin(), loaded.rows.end(),
        [](const DataModel &row) { return row.isLocal; });
    QVERIFY(local != loaded.rows.end());
    QVERIFY(local->url.startsWith(m_sandbox.address(SandboxProcess::Local)));
    QVERIFY(local->url_qe.startsWith(m_sandbox.address(SandboxProcess::Local)));
}

void SiteConfigurationTest::readsRowsOfMixedTypes()
{
    const QJsonArray list {QJsonObject {{u"full_name"_qs, u"一中"_qs}, {u"site_code"_qs, 12},
                               {u"is_local"_qs, 1}, {u"url"_qs, u"http://u"_qs},
                               {u"url_qe"_qs, u"http://q"_qs}, {u"site_id"_qs, 10001}},
        u"no school"_qs, QJsonValue::Null,
        QJsonObject {{u"full_name"_qs, u"二中"_qs}, {u"url"_qs, QJsonValue::Null}}};
    m_sandbox.setAnswer({{u"start"_qs, u"cndSite"_qs}, {u"data"_qs, QJsonObject {{u"list"_qs, list}}}});

    QCOMPARE(load().rows,
        (QList<DataModel> {
            {u"一中"_qs, u"12"_qs, true, u"http://u"_qs, u"http://q"_qs, u"10001"_qs},
            {u"二中"_qs, {}, false, {}, {}, {}}}));
}

void SiteConfigurationTest::missingAddressIsForgotten()
{
    load();
    m_sandbox.setAnswer({{u"start"_qs, u"cndSite"_qs},
        {u"data"_qs,
            QJsonObject {{u"terminal_cdn"_qs, u"t"_qs}, {u"rb_cdn"_qs, QJsonValue::Null},
                {u"base_cdn"_qs, QJsonArray {1}}, {u"register_cdn"_qs, u"r"_qs},
                {u"zzrb_cdn"_qs, u"z"_qs}}}});
    QCOMPARE(load().status, 200);
    QCOMPARE(addresses(), (QStringList {u"t"_qs, {}, {}, u"r"_qs, u"z"_qs, {}}));
    QVERIFY(m_client->loginModel.qeCDN().isNull());
}

void SiteConfigurationTest::emptyListStillStoresTheAddresses()
{
    m_sandbox.setAnswer({{u"start"_qs, u"cndSite"_qs},
        {u"data"_qs, QJsonObject {{u"qe_cdn"_qs, u"q"_qs}, {u"list"_qs, QJsonArray()}}}});
    const Loaded loaded = load();
    QCOMPARE(loaded.status, 200);
    QVERIFY(loaded.rows.isEmpty());
    QCOMPARE(m_client->loginModel.qeCDN(), u"q"_qs);
}

void SiteConfigurationTest::failureLeavesTheAddressesAlone_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");

    QTest::newRow("refusal") << R"({"code":500,"msg":"维护中"})" << 1 << u"维护中"_qs;
    QTest::newRow("second success") << R"({"code":8888,"data":{}})" << 8888 << QString();
    QTest::newRow("truncated") << R"({"code":200,"data":{"rb_cdn":"x)" << 1 << u"请求错误"_qs;
    QTest::newRow("no data") << R"({"code":200})" << 1 << u"请求错误"_qs;
    QTest::newRow("data is a list") << R"({"code":200,"data":[]})" << 1 << u"请求错误"_qs;
}

void SiteConfigurationTest::failureLeavesTheAddressesAlone()
{
    QFETCH(QString, body);
    QFETCH(int, status);
    QFETCH(QString, text);
    load();
    const QStringList before = addresses();
    m_sandbox.addFault({{u"start"_qs, u"cndSite"_qs}, {u"body"_qs, body}});

    const Loaded loaded = load();
    QCOMPARE(loaded.status, status);
    QCOMPARE(loaded.error ? loaded.error->errorDescription : QString(), text);
    QVERIFY(loaded.rows.isEmpty());
    QCOMPARE(addresses(), before);
}

QTEST_GUILESS_MAIN(SiteConfigurationTest)
#include "SiteConfigurationTest.moc"
