#include "net/NetClient.h"
#include "support/SandboxProcess.h"

#include <QSize>
#include <QTest>

//! Every operation of the catalogue as the server receives it, and the parameters' way there.
class RequestCatalogueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_sandbox.reset(); }
    void sendsTheOperation_data();
    void sendsTheOperation();
    void deviceIdentifierIsAwaited();
    void organizationIsTheOneOfTheMomentOfTheCall();
    void sendsItsOwnUserAgentAndTheSharedCookies();
    void everyCharacterArrivesUnchanged_data();
    void everyCharacterArrivesUnchanged();
    void ownActionAndStartAreOverwritten();
    void nilParametersStayAway();

private:
    TracedRequest received();

    SandboxProcess m_sandbox {{u"--schools"_qs, u"12"_qs}};
};

using Operation = std::function<void(RequestInterface &requests, ResponseCallback response)>;
Q_DECLARE_METATYPE(Operation)

void RequestCatalogueTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

TracedRequest RequestCatalogueTest::received()
{
    const auto requests = m_sandbox.takeRequests();
    return requests.size() == 1 ? requests.first() : TracedRequest();
}

void RequestCatalogueTest::sendsTheOperation_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<int>("host");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("query");

    const auto row = [](const char *name, SandboxProcess::Host host, const char *path,
                         const char *query, const Operation &operation) {
        QTest::newRow(name) << operation << int(host) << QString::fromLatin1(path)
                            << QByteArray(query);
    };
    using R = RequestInterface;
    using C = ResponseCallback;
    constexpr auto rb = SandboxProcess::Rb;
    constexpr auto regions = SandboxProcess::Regions;

    row("studentTeacherLogin", rb, "/school01/do",
        "action=rb%2Fh5%2Flogin&app_type=IOS&client_code=[student]&start=login&user_code=u&user_pwd=p",
        [](R &r, C c) { r.studentTeacherLoginWithAccount(u"u"_qs, u"p"_qs, c); });
    row("studentAndTeacherLogin", rb, "/school01/do",
        "action=rb%2Fh5%2Flogin&start=login&user_code=u&user_pwd=p",
        [](R &r, C c) { r.studentAndTeacherLoginWithAccount(u"u"_qs, u"p"_qs, c); });
    row("patriarchalLogin", regions, "/school01/do",
        "action=qe%2Fh5%2Flogin&app_type=IOS&client_code=[patriarch]&start=login_tea&user_code=u"
        "&user_pwd=p",
        [](R &r, C c) { r.patriarchalLoginWithAccount(u"u"_qs, u"p"_qs, c); });
    row("verifyAccount", rb, "/school01/do",
        "action=rb%2Fh5%2Flogin&card_no=c&start=verifyAccount&user_no=n",
        [](R &r, C c) { r.verifyAccountWithUserNo(u"n"_qs, u"c"_qs, c); });
    row("verifyPatriarchAccount", rb, "/school01/do",
        "action=rb%2Fh5%2Flogin&card_no=c&start=verifyAccount_tea&user_name=n",
        [](R &r, C c) { r.verifyPatriarchAccountWithUserName(u"n"_qs, u"c"_qs, c); });
    row("siteSearch", rb, "/do",
        "action=rb%2Fplatform%2Fsite&searchkey=%E5%8E%A6%E9%97%A8&start=siteSearch",
        [](R &r, C c) { r.requsetSiteWithSearchkey(u"厦门"_qs, c); });
    row("settingAccount", rb, "/school01/do",
        "action=rb%2Fh5%2Flogin&start=settingAccount&user_code=code&user_id=id&user_pwd=pwd",
        [](R &r, C c) { r.settingAccountWithUserID(u"id"_qs, u"code"_qs, u"pwd"_qs, c); });
    row("settingPatriarchAccount", rb, "/school01/do",
        "action=rb%2Fh5%2Flogin&start=settingAccount_tea&user_code=code&user_id=id&user_pwd=pwd",
        [](R &r, C c) { r.settingPatriarchAccountWithUserID(u"id"_qs, u"code"_qs, u"pwd"_qs, c); });
    row("regionTree", regions, "/do", "action=qe%2Fplatform%2Fregions&start=tree",
        [](R &r, C c) { r.getSchoolDataWithResponse(c); });
    row("appUpdateInfo", SandboxProcess::Base, "/do",
        "action=base%2Fplatform%2Fportal&app_name=a&app_os=IOS&cur_bulid_no=7&start=appUpdateInfo",
        [](R &r, C c) { r.checkAppUpdateWithCurNo(u"7"_qs, u"a"_qs, c); });
    row("bindIm", regions, "/school01/do",
        "action=qe%2Fh5%2Fthird&app_type=8&dev_type=7&entrance=1&im_type=6&reg_id=3&site_id=2"
        "&start=bindIm&user_id=4&user_type=5",
        [](R &r, C c) {
            r.bindUserInfoEntrance(u"1"_qs, u"2"_qs, u"3"_qs, u"4"_qs, u"5"_qs, u"6"_qs, u"7"_qs,
                u"8"_qs, c);
        });
    row("cndSite", rb, "/do", "action=rb%2Fplatform%2Fsite&start=cndSite",
        [](R &r, C c) { r.requestSchoolInfo(c); });
    row("getSetting4App", rb, "/do",
        "action=gpl%2Fplatform%2Fportal&site_id=10001&start=getSetting4App",
        [](R &r, C c) { r.requestSchoolLogo(u"10001"_qs, c); });
    row("listAd4App", rb, "/do",
        "action=gpl%2Fplatform%2Fportal&resolution_pixel=1170%2A2532&start=listAd4App&terminal=ios",
        [](R &r, C c) { r.requestAd({1170, 2532}, c); });
    row("bindGeTui", rb, "/school01/do",
        "action=gpl%2Fcommon%2Fhv%2Fbind&c_id=c&dev_type=1&start=bindGeTui&user_id=u",
        [](R &r, C c) { r.bindGeTuiWithC_id(u"c"_qs, u"u"_qs, c); });
    row("unBindGeTui", rb, "/school01/do",
        "action=gpl%2Fcommon%2Fhv%2Fbind&c_id=c&start=unBindGeTui&user_id=u",
        [](R &r, C c) { r.unbindGeTuiWithC_id(u"c"_qs, u"u"_qs, c); });
    row("login4AppWeixin", rb, "/school01/do",
        "action=gpl%2Fportal&code=c&start=login4AppWeixin&type=2",
        [](R &r, C c) { r.loginForAppWeixinWithCode(u"c"_qs, 2, c); });
    row("accountBindWechat", rb, "/school01/do",
        "action=gpl%2Fportal&bind_type=WEIXIN&login_type=1&nick=n&open_id=o&sign=s&start=login4H5"
        "&timestamp=t&union_id=i&user_code=u&user_pwd=p",
        [](R &r, C c) {
            r.accountBindWechatWithUserCode(u"u"_qs, u"p"_qs, u"i"_qs, u"o"_qs, u"n"_qs, u"t"_qs,
                u"s"_qs, u"WEIXIN"_qs, u"1"_qs, c);
        });
    row("tokenLogin", rb, "/school01/do",
        "action=gpl%2Fportal&login_token=t&login_type=3&start=login4H5",
        [](R &r, C c) { r.tokenLogin(u"t"_qs, c); });
    row("agreementUser", rb, "/do", "action=gpl%2Fplatform%2Fportal&start=agreement&type=1",
        [](R &r, C c) { r.requestAgreementUser(c); });
    row("agreementPrivacy", rb, "/do", "action=gpl%2Fplatform%2Fportal&start=agreement&type=2",
        [](R &r, C c) { r.requestAgreementPrivacy(c); });
}

void RequestCatalogueTest::sendsTheOperation()
{
    QFETCH(Operation, operation);
    QFETCH(int, host);
    QFETCH(QString, path);
    QFETCH(QByteArray, query);
    NetClient client(m_sandbox.hosts());
    for (DeviceIdentifier *identifier : {&client.student, &client.patriarch})
        identifier->prepare();
    QTRY_VERIFY(!client.student.uuid().isNull() && !client.patriarch.uuid().isNull());
    QVERIFY(client.student.uuid() != client.patriarch.uuid());
    client.requests.setOrganization(u"school01"_qs);

    const Answer answer = NetClient::await(
        [&](ResponseCallback response) { operation(client.requests, std::move(response)); });

    QVERIFY2(answer.status != 0, "no answer");
    const TracedRequest request = received();
    QCOMPARE(request.method, u"GET"_qs);
    QCOMPARE(request.host, m_sandbox.authority(SandboxProcess::Host(host)));
    QCOMPARE(request.path, path);
    QCOMPARE(request.query,
        query.replace("[student]", client.student.uuid().toUtf8())
            .replace("[patriarch]", client.patriarch.uuid().toUtf8()));
    QCOMPARE(request.status, 200);
}

void RequestCatalogueTest::deviceIdentifierIsAwaited()
{
    NetClient client(m_sandbox.hosts());
    client.requests.setOrganization(u"school01"_qs);
    Answer answer;
    client.requests.studentTeacherLoginWithAccount(u"u"_qs, u"p"_qs,
        [&](int status, const QJsonValue &, const auto &) { answer.status = status; });
    QVERIFY(client.manager.connectItems().empty());
    client.student.prepare();
    QTRY_VERIFY(answer.status != 0);
    QCOMPARE(received().value(u"client_code"_qs), client.student.uuid());
}

void RequestCatalogueTest::organizationIsTheOneOfTheMomentOfTheCall()
{
    NetClient client(m_sandbox.hosts());
    client.requests.setOrganization(u"school01"_qs);
    NetClient::await([&](ResponseCallback response) {
        client.requests.tokenLogin(u"t"_qs, std::move(response));
        client.requests.setOrganization(u"school02"_qs);
    });
    QCOMPARE(received().path, u"/school01/do"_qs);
    QCOMPARE(client.requests.getCurrentOrganization(), u"school02"_qs);
}

void RequestCatalogueTest::sendsItsOwnUserAgentAndTheSharedCookies()
{
    NetClient client(m_sandbox.hosts());
    m_sandbox.addFault({{u"start"_qs, u"login"_qs},
        {u"headers"_qs, QJsonObject {{u"Set-Cookie"_qs, u"mo=1; Path=/"_qs}}}});
    client.connect(u"rb/h5/login"_qs, u"login"_qs);
    client.connect(u"rb/h5/login"_qs, u"login"_qs);

    const auto requests = m_sandbox.takeRequests();
    QCOMPARE(requests.size(), 2);
    for (const TracedRequest &request : requests) {
        QCOMPARE(request.headers.value(u"user-agent"_qs), u"vant-ios;client-st;"_qs);
        // The cookie string of the last answer stays at home; the cookie itself travels as a cookie.
        QVERIFY(!request.headers.contains(u"set-cookie"_qs));
    }
    QVERIFY(!requests.first().headers.contains(u"cookie"_qs));
    QCOMPARE(requests.last().headers.value(u"cookie"_qs), u"mo=1"_qs);
}

void RequestCatalogueTest::everyCharacterArrivesUnchanged_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("query") << int(RequestItem::Get);
    QTest::newRow("form") << int(RequestItem::Post);
}

void RequestCatalogueTest::everyCharacterArrivesUnchanged()
{
    QFETCH(int, type);
    QString password = u"%41 %zz 中文 😀\n\t\"+&=%"_qs;
    for (char c = ' '; c <= '~'; ++c)
        password += QLatin1Char(c);
    NetClient client(m_sandbox.hosts());
    client.connect(u"gpl/portal"_qs, u"login4H5"_qs, type, {{u"user_pwd"_qs, password}});

    const TracedRequest request = received();
    const QByteArray pairs = type == RequestItem::Get ? request.query : request.body;
    const QByteArray sent = pairs.mid(pairs.indexOf("user_pwd=") + qstrlen("user_pwd="));
    QCOMPARE(QString::fromUtf8(QByteArray::fromPercentEncoding(sent)), password);
    for (const char reserved : QByteArrayView(":/?#[]@!$&'()*+,;= \"<>\\^`{|}"))
        QVERIFY2(!sent.contains(reserved), sent);
    if (type == RequestItem::Post) {
        QCOMPARE(request.method, u"POST"_qs);
        QCOMPARE(request.query, QByteArray());
        QCOMPARE(request.headers.value(u"content-type"_qs), u"application/x-www-form-urlencoded"_qs);
        QCOMPARE(request.headers.value(u"user-agent"_qs), u"vant-ios;client-st;"_qs);
    }
}

void RequestCatalogueTest::ownActionAndStartAreOverwritten()
{
    NetClient client(m_sandbox.hosts());
    client.connect(u"gpl/portal"_qs, u"login4H5"_qs, RequestItem::Get,
        {{u"action"_qs, u"mine"_qs}, {u"start"_qs, u"mine"_qs}, {u"zero"_qs, 0}});
    QCOMPARE(received().query, QByteArray("action=gpl%2Fportal&start=login4H5&zero=0"));
}

void RequestCatalogueTest::nilParametersStayAway()
{
    NetClient client(m_sandbox.hosts());
    NetClient::await([&](ResponseCallback response) {
        client.requests.accountBindWechatWithUserCode(u"u"_qs, u""_qs, {}, {}, {}, {}, {}, {}, {},
            std::move(response));
    });
    QCOMPARE(received().query, QByteArray("action=gpl%2Fportal&start=login4H5&user_code=u&user_pwd="));
}

QTEST_GUILESS_MAIN(RequestCatalogueTest)
#include "RequestCatalogueTest.moc"
