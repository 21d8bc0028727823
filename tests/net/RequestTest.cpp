#include "net/NetClient.h"
#include "support/PlatformProcess.h"

#include <QSize>
#include <QTest>

//! What a server receives: every operation of the catalogue, at the address that the rules choose.
class RequestTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void sendsTheOperation_data();
    void sendsTheOperation();
    void choosesTheAddress_data();
    void choosesTheAddress();
    void withoutALocalServerThereIsNowhereToGo();
    void usesWhatIsKnownAtTheMomentOfTheCall();
    void everyCharacterArrivesUnchanged();
    void cookiesTravelAsCookies();

private:
    TracedRequest received();

    PlatformProcess m_platform {{u"--schools"_qs, u"12"_qs}};
    std::unique_ptr<NetClient> m_client;
};

using Operation = std::function<void(RequestInterface &requests, ResponseCallback response)>;
Q_DECLARE_METATYPE(Operation)

void RequestTest::initTestCase()
{
    QVERIFY(m_platform.isRunning());
}

void RequestTest::init()
{
    m_platform.reset();
    m_client = std::make_unique<NetClient>(m_platform.hosts());
    m_client->requests.setOrganization(u"school01"_qs);
}

TracedRequest RequestTest::received()
{
    const auto requests = m_platform.takeRequests();
    return requests.size() == 1 ? requests.first() : TracedRequest();
}

void RequestTest::sendsTheOperation_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<PlatformProcess::Host>("host");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("query");

    const auto row = [](const char *name, PlatformProcess::Host host, const char *path,
                         const char *query, const Operation &operation) {
        QTest::newRow(name) << operation << host << QString::fromLatin1(path) << QByteArray(query);
    };
    using R = RequestInterface;
    using C = ResponseCallback;
    constexpr auto rb = PlatformProcess::Rb;
    constexpr auto regions = PlatformProcess::Regions;

    row("studentTeacherLogin", rb, "/school01/do",
        "action=rb%2Fh5%2Flogin&app_type=IOS&client_code=[student]&start=login&user_code=u&user_"
        "pwd=p",
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
    row("appUpdateInfo", PlatformProcess::Base, "/do",
        "action=base%2Fplatform%2Fportal&app_name=a&app_os=IOS&cur_bulid_no=7&start=appUpdateInfo",
        [](R &r, C c) { r.checkAppUpdateWithCurNo(u"7"_qs, u"a"_qs, c); });
    row("bindIm", regions, "/school01/do",
        "action=qe%2Fh5%2Fthird&app_type=8&dev_type=7&entrance=1&im_type=6&reg_id=3&site_id=2"
        "&start=bindIm&user_id=4&user_type=5",
        [](R &r, C c) {
            r.bindUserInfoEntrance(
                u"1"_qs, u"2"_qs, u"3"_qs, u"4"_qs, u"5"_qs, u"6"_qs, u"7"_qs, u"8"_qs, c);
        });
    row("cndSite", rb, "/do", "action=rb%2Fplatform%2Fsite&start=cndSite",
        [](R &r, C c) { r.requestSchoolInfo(c); });
    row("getSetting4App", rb, "/do",
        "action=gpl%2Fplatform%2Fportal&site_id=10001&start=getSetting4App",
        [](R &r, C c) { r.requestSchoolLogo(u"10001"_qs, c); });
    row("listAd4App", rb, "/do",
        "action=gpl%2Fplatform%2Fportal&resolution_pixel=1170%2A2532&start=listAd4App&terminal=ios",
        [](R &r, C c) {
            r.requestAd({1170, 2532}, c);
        });
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

void RequestTest::sendsTheOperation()
{
    QFETCH(Operation, operation);
    QFETCH(PlatformProcess::Host, host);
    QFETCH(QString, path);
    QFETCH(QByteArray, query);
    m_client->student.prepare();
    m_client->patriarch.prepare();
    // Where the operation carries an identifier the call waits until it is ready.
    const Answer answer = NetClient::await(
        [&](ResponseCallback response) { operation(m_client->requests, std::move(response)); });

    QVERIFY2(answer.status != 0, "no answer");
    const TracedRequest request = received();
    QCOMPARE(request.method, u"GET"_qs);
    QCOMPARE(request.host, m_platform.authority(host));
    QCOMPARE(request.path, path);
    QCOMPARE(request.query,
        query.replace("[student]", m_client->student.uuid().toUtf8())
            .replace("[patriarch]", m_client->patriarch.uuid().toUtf8()));
    QCOMPARE(request.status, 200);
    QCOMPARE(request.headers.value(u"user-agent"_qs), u"vant-ios;client-st;"_qs);
}

void RequestTest::choosesTheAddress_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("localAddress");

    const auto row = [this](const char *action, const char *start, PlatformProcess::Host host,
                         const char *path, const char *localPath) {
        const QString address = m_platform.address(host) + QString::fromLatin1(path);
        const QString local = m_platform.address(PlatformProcess::Local);
        QTest::addRow("%s %s", action, start)
            << QString::fromLatin1(action) << QString::fromLatin1(start) << address
            << (localPath ? local + QString::fromLatin1(localPath) : address);
    };
    constexpr auto rb = PlatformProcess::Rb;
    constexpr auto regions = PlatformProcess::Regions;
    row("rb/platform/site", "cndSite", rb, "do?", nullptr);
    row("gpl/platform/portal", "listAd4App", rb, "do?", nullptr);
    row("qe/platform/regions", "tree", regions, "do?", nullptr);
    row("api/public_all", "get", PlatformProcess::Public, "do?", nullptr);
    row("base/platform/portal", "appUpdateInfo", PlatformProcess::Base, "do?", nullptr);
    row("qe/h5/third", "bindIm", regions, "school01/do?", "rb/qe/do?");
    row("gpl/common/hv/bind", "bindGeTui", rb, "school01/do?", "rb/qe/do?");
    row("rb/h5/login", "login", rb, "school01/do", "rb/do?");
    row("gpl/portal", "login4H5", rb, "school01/do", "rb/do?");
    row("qe/h5/login", "login_tea", regions, "school01/do?", "qe/qe/do?");
    row("some/other", "x", regions, "", "rb");
    row("gpl/portal", "agreement", rb, "do?", nullptr);
    row("some/other", "agreement", rb, "do?", nullptr);
}

void RequestTest::choosesTheAddress()
{
    QFETCH(QString, action);
    QFETCH(QString, start);
    QFETCH(QString, address);
    QFETCH(QString, localAddress);
    for (const QString &expected : {address, localAddress}) {
        QCOMPARE(m_client->manager.addressOf(action, start, u"school01"_qs), expected);
        m_client->connect(action, start);
        const TracedRequest request = received();
        QCOMPARE(request.host, QUrl(expected).authority());
        QCOMPARE(request.path, QUrl(expected).path());
        QCOMPARE(request.query,
            "action=" + QUrl::toPercentEncoding(action) + "&start=" + start.toUtf8());
        const QString local = m_platform.address(PlatformProcess::Local);
        m_client->setLocal(local + u"rb"_qs, local + u"rb/qe"_qs);
    }
}

void RequestTest::withoutALocalServerThereIsNowhereToGo()
{
    for (const QString &none : {QString(), u""_qs}) {
        m_client->setLocal(none, {});
        QCOMPARE(m_client->manager.addressOf(u"a"_qs, u"x"_qs, {}), m_platform.hosts().regions);
        const Answer answer = m_client->connect(u"gpl/portal"_qs, u"login4H5"_qs);
        QCOMPARE(answer.status, 1);
        QCOMPARE(answer.error->errorDescription, u"请求错误"_qs);
    }
    m_client->setLocal(m_platform.address(PlatformProcess::Local), {});
    m_client->loginModel.setIsLocal(false);
    QCOMPARE(m_client->manager.addressOf(u"a"_qs, u"x"_qs, {}), m_platform.hosts().regions);
    QVERIFY(m_platform.takeRequests().isEmpty());
}

void RequestTest::usesWhatIsKnownAtTheMomentOfTheCall()
{
    NetClient::await([&](ResponseCallback response) {
        m_client->requests.accountBindWechatWithUserCode(
            u"u"_qs, u""_qs, {}, {}, {}, {}, {}, {}, {}, std::move(response));
        m_client->requests.setOrganization(u"school02"_qs);
    });
    const TracedRequest request = received();
    QCOMPARE(request.path, u"/school01/do"_qs);
    // An empty value stays, a missing one does not.
    QCOMPARE(request.query, QByteArray("action=gpl%2Fportal&start=login4H5&user_code=u&user_pwd="));
}

void RequestTest::everyCharacterArrivesUnchanged()
{
    QString password = u"%41 %zz 中文 😀\n\t\"+&=%"_qs;
    for (char c = ' '; c <= '~'; ++c)
        password += QLatin1Char(c);
    for (const int type : {RequestItem::Get, RequestItem::Post}) {
        // The action and the start that are given beside the parameters win.
        m_client->connect(u"gpl/portal"_qs, u"login4H5"_qs, type,
            {{u"user_pwd"_qs, password}, {u"action"_qs, u"mine"_qs}, {u"start"_qs, u"mine"_qs}});
        const TracedRequest request = received();
        const bool isPost = type == RequestItem::Post;
        const QByteArray pairs = isPost ? request.body : request.query;
        const QByteArray before = "action=gpl%2Fportal&start=login4H5&user_pwd=";
        QVERIFY2(pairs.startsWith(before), pairs);
        const QByteArray sent = pairs.mid(before.size());
        QCOMPARE(QString::fromUtf8(QByteArray::fromPercentEncoding(sent)), password);
        for (const char reserved : QByteArrayView(":/?#[]@!$&'()*+,;= \"<>\\^`{|}"))
            QVERIFY2(!sent.contains(reserved), sent);
        QCOMPARE(request.method, isPost ? u"POST"_qs : u"GET"_qs);
        QCOMPARE((isPost ? request.query : request.body), QByteArray());
        QCOMPARE(request.headers.value(u"content-type"_qs),
            isPost ? u"application/x-www-form-urlencoded"_qs : QString());
    }
}

void RequestTest::cookiesTravelAsCookies()
{
    m_platform.addFault({{u"start"_qs, u"login"_qs},
        {u"headers"_qs, QJsonObject {{u"Set-Cookie"_qs, u"mo=1; Path=/"_qs}}}});
    m_client->connect(u"rb/h5/login"_qs, u"login"_qs);
    m_client->connect(u"rb/h5/login"_qs, u"login"_qs);

    const auto requests = m_platform.takeRequests();
    QCOMPARE(requests.size(), 2);
    QVERIFY(!requests.first().headers.contains(u"cookie"_qs));
    QCOMPARE(requests.last().headers.value(u"cookie"_qs), u"mo=1"_qs);
    // The cookie string of the last answer stays at home.
    QVERIFY(!requests.last().headers.contains(u"set-cookie"_qs));
}

QTEST_GUILESS_MAIN(RequestTest)
#include "RequestTest.moc"
