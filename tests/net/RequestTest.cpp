#include "net/NetClient.h"
#include "net/request/LogMask.h"
#include "support/PlatformProcess.h"

#include <QJsonArray>
#include <QTest>

//! What a server receives, and at which address.
class RequestTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void choosesTheAddress_data();
    void choosesTheAddress();
    void everyCharacterArrivesUnchanged();
    void secretsStayOutOfTheLog();

private:
    TracedRequest received();

    PlatformProcess m_platform {{u"--schools"_qs, u"12"_qs}};
    std::unique_ptr<NetClient> m_client;
};

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

void RequestTest::secretsStayOutOfTheLog()
{
    HTTPParameters sent {{u"user_id"_qs, u"7"_qs}, {u"sign"_qs, QString()}};
    QJsonObject answered {{u"user_id"_qs, 7}, {u"code"_qs, 200}};
    for (const QString &name : {u"user_pwd"_qs, u"login_token"_qs, u"c_id"_qs, u"card_no"_qs}) {
        sent[name] = u"secret"_qs;
        answered[name] = 42;
    }
    sent[u"code"_qs] = u"secret"_qs;
    const HTTPParameters shown = LogMask::parameters(sent);
    const QJsonObject told = LogMask::answer(answered).toObject();
    QCOMPARE(shown.keys(), sent.keys());
    for (auto member = shown.begin(); member != shown.end(); ++member) {
        const bool isOpen = member.key() == u"user_id" || member.key() == u"sign";
        QCOMPARE(member.value(), isOpen ? sent[member.key()] : QVariant(u"***"_qs));
    }
    for (auto member = told.begin(); member != told.end(); ++member) {
        const bool isOpen = member.key() == u"user_id" || member.key() == u"code";
        QCOMPARE(member.value(), isOpen ? answered[member.key()] : QJsonValue(u"***"_qs));
    }
    QCOMPARE(LogMask::answer(QJsonArray {1}), QJsonValue(QJsonArray {1}));
}

QTEST_GUILESS_MAIN(RequestTest)
#include "RequestTest.moc"
