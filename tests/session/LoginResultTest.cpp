#include "session/SessionClient.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QJsonObject object(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

QJsonObject fullAnswer()
{
    return {
        {u"siteInfo"_s,
            QJsonObject {{u"global_ctx"_s, u"http://g/"_s}, {u"site_code"_s, u"school01"_s},
                {u"redirect_url"_s, u"http://p/i"_s}}},
        {u"redirect_url"_s, u"http://p/index.html"_s},
        {u"user"_s,
            QJsonObject {{u"user_id"_s, u"u1"_s}, {u"user_type"_s, u"1"_s}, {u"site_id"_s, 10001}}},
        {u"user_type"_s, u"2"_s},
        {u"ssoinfo"_s, QJsonObject {{u"ck_LoginId"_s, u"u1"_s}, {u"ck_RoleIds"_s, 1}}},
        {u"login_token"_s, u"new token"_s},
    };
}

}

class LoginResultTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void storesTheAnswer_data();
    void storesTheAnswer();
    void theSilentFormStoresNothingElse();
    void signsInOnlyOnRefresh();
    void theScreensFormSignsInLast();
    void anEmptyRegionLeavesTheStoredOne();
    void keepsTheRedirectAddressAsReceived_data();
    void keepsTheRedirectAddressAsReceived();
    void keepsATokenThatWorks_data();
    void keepsATokenThatWorks();
    void takesAnEmptyAnswer();

private:
    LoginModel &model() { return m_client->net.loginModel; }

    std::unique_ptr<SessionClient> m_client;
};

void LoginResultTest::init()
{
    m_client = std::make_unique<SessionClient>(DeploymentConfiguration::Hosts());
    m_client->net.requests.setOrganization(u"school01"_s);
    model().setLogin_token(u"old token"_s);
}

void LoginResultTest::storesTheAnswer_data()
{
    QTest::addColumn<bool>("byScreen");
    QTest::newRow("the silent login's form") << false;
    QTest::newRow("the login screens' form") << true;
}

void LoginResultTest::storesTheAnswer()
{
    QFETCH(bool, byScreen);
    if (byScreen)
        m_client->result.handleLoginResult(fullAnswer(), ChosenRegion());
    else
        m_client->result.handleLoginResult(fullAnswer(), LoginResult::Refresh::Yes);

    QCOMPARE(model().siteCode(), u"school01"_s);
    QCOMPARE(model().siteInfo, (SiteModel {u"http://g/"_s, {}, u"school01"_s, u"http://p/i"_s}));
    QCOMPARE(model().user_type, 2);
    QVERIFY(model().userModel.has_value());
    QCOMPARE(model().userModel->user_id, u"u1"_s);
    QCOMPARE(model().userModel->user_type, 1);
    QCOMPARE(model().userModel->site_id, u"10001"_s);
    QCOMPARE(model().ssoinfo, (SsoModel {u"u1"_s, {}, u"1"_s, {}}));
    QCOMPARE(model().login_token(), u"new token"_s);
    QVERIFY(model().isLogin());
}

void LoginResultTest::theSilentFormStoresNothingElse()
{
    model().setSchool(u"厦门实验小学"_s);
    m_client->result.handleLoginResult(fullAnswer(), LoginResult::Refresh::Yes);
    QVERIFY(!m_client->net.defaults.objectForKey(u"redirect_url"_s).isValid());
    QCOMPARE(model().school(), u"厦门实验小学"_s);
}

void LoginResultTest::signsInOnlyOnRefresh()
{
    int writes = 0;
    model().observeIsLogin(this, [&](bool) { ++writes; });
    m_client->result.handleLoginResult(fullAnswer(), LoginResult::Refresh::No);
    QVERIFY(!model().isLogin());
    QCOMPARE(writes, 1);
    QCOMPARE(model().login_token(), u"new token"_s);
}

void LoginResultTest::theScreensFormSignsInLast()
{
    int signedIn = 0;
    model().observeIsLogin(this, [&](bool isLogin) {
        if (!isLogin)
            return;
        ++signedIn;
        QCOMPARE(model().login_token(), u"new token"_s);
        QCOMPARE(model().school(), u"厦门实验小学"_s);
        QCOMPARE(model().provinces(), u"福建"_s);
        QCOMPARE(model().city(), u"厦门"_s);
        QCOMPARE(
            m_client->net.defaults.stringForKey(u"redirect_url"_s), u"http://p/index.html"_s);
        QVERIFY(model().ssoinfo && model().userModel && model().siteInfo);
    });
    m_client->result.handleLoginResult(
        fullAnswer(), ChosenRegion {u"厦门实验小学"_s, u"福建"_s, u"厦门"_s});
    QCOMPARE(signedIn, 1);
}

void LoginResultTest::anEmptyRegionLeavesTheStoredOne()
{
    model().setSchool(u"A"_s);
    model().setProvinces(u"B"_s);
    model().setCity(u"C"_s);
    m_client->result.handleLoginResult(fullAnswer(), ChosenRegion {{}, u""_s, u"新"_s});
    QCOMPARE(model().school(), u"A"_s);
    QCOMPARE(model().provinces(), u"B"_s);
    QCOMPARE(model().city(), u"新"_s);
}

void LoginResultTest::keepsTheRedirectAddressAsReceived_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("stored");
    QTest::newRow("an address") << R"({"redirect_url": "http://p/?a=1;b=\"2\""})"_ba
                                << uR"(http://p/?a=1;b="2")"_s;
    QTest::newRow("empty") << R"({"redirect_url": ""})"_ba << u""_s;
    QTest::newRow("null") << R"({"redirect_url": null})"_ba << QString();
    QTest::newRow("absent") << "{}"_ba << QString();
}

void LoginResultTest::keepsTheRedirectAddressAsReceived()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, stored);
    m_client->net.defaults.setObject(u"http://before/"_s, u"redirect_url"_s);
    m_client->result.handleLoginResult(object(answer), ChosenRegion());
    const UserDefaults restarted(m_client->net.folder.filePath(u"settings.ini"_s));
    QCOMPARE(restarted.stringForKey(u"redirect_url"_s), stored);
    QCOMPARE(restarted.objectForKey(u"redirect_url"_s).isValid(), !stored.isNull());
}

void LoginResultTest::keepsATokenThatWorks_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("token");
    QTest::newRow("new") << R"({"login_token": "new"})"_ba << u"new"_s;
    QTest::newRow("a number") << R"({"login_token": 123456})"_ba << u"123456"_s;
    QTest::newRow("absent") << "{}"_ba << u"old token"_s;
    QTest::newRow("empty") << R"({"login_token": ""})"_ba << u"old token"_s;
    QTest::newRow("null") << R"({"login_token": null})"_ba << u"old token"_s;
    QTest::newRow("an object") << R"({"login_token": {"token": "x"}})"_ba << u"old token"_s;
}

void LoginResultTest::keepsATokenThatWorks()
{
    QFETCH(QByteArray, answer);
    m_client->result.handleLoginResult(object(answer), LoginResult::Refresh::Yes);
    QTEST(model().login_token(), "token");
}

void LoginResultTest::takesAnEmptyAnswer()
{
    m_client->result.handleLoginResult(object(R"({"user": [1], "siteInfo": "x", "user_type": {}})"),
        LoginResult::Refresh::Yes);
    QCOMPARE(model().userModel, UserModel());
    QCOMPARE(model().siteInfo, SiteModel());
    QCOMPARE(model().user_type, 0);
    QCOMPARE(model().siteCode(), u"school01"_s);
}

QTEST_GUILESS_MAIN(LoginResultTest)
#include "LoginResultTest.moc"
