#include "net/NetClient.h"
#include "support/SandboxProcess.h"

#include <QTest>

//! Every rule that chooses an address, as the login record and the deployment have it, and as a server receives it.
class RequestAddressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void choosesTheAddress_data();
    void choosesTheAddress();
    void missingLocalServer_data();
    void missingLocalServer();

private:
    QString filledIn(QString address) const;

    SandboxProcess m_sandbox {{u"--schools"_qs, u"12"_qs}};
};

void RequestAddressTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

QString RequestAddressTest::filledIn(QString address) const
{
    return address.replace(u"[rb]"_qs, m_sandbox.address(SandboxProcess::Rb))
        .replace(u"[regions]"_qs, m_sandbox.address(SandboxProcess::Regions))
        .replace(u"[public]"_qs, m_sandbox.address(SandboxProcess::Public))
        .replace(u"[base]"_qs, m_sandbox.address(SandboxProcess::Base))
        .replace(u"[local]"_qs, m_sandbox.address(SandboxProcess::Local));
}

void RequestAddressTest::choosesTheAddress_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("localAddress");

    const auto row = [](const char *action, const char *start, const char *address,
                         const char *localAddress) {
        QTest::addRow("%s %s", action, start)
            << QString::fromLatin1(action) << QString::fromLatin1(start)
            << QString::fromLatin1(address) << QString::fromLatin1(localAddress);
    };
    row("rb/platform/site", "cndSite", "[rb]do?", "[rb]do?");
    row("gpl/platform/portal", "listAd4App", "[rb]do?", "[rb]do?");
    row("qe/platform/regions", "tree", "[regions]do?", "[regions]do?");
    row("api/public_all", "get", "[public]do?", "[public]do?");
    row("base/platform/portal", "appUpdateInfo", "[base]do?", "[base]do?");
    row("qe/h5/third", "bindIm", "[regions]school01/do?", "[local]rb/qe/do?");
    row("gpl/common/hv/bind", "bindGeTui", "[rb]school01/do?", "[local]rb/qe/do?");
    row("rb/h5/login", "login", "[rb]school01/do", "[local]rb/do?");
    row("gpl/portal", "login4H5", "[rb]school01/do", "[local]rb/do?");
    row("qe/h5/login", "login_tea", "[regions]school01/do?", "[local]qe/qe/do?");
    row("some/other", "x", "[regions]", "[local]rb");
    row("gpl/platform/portal", "agreement", "[rb]do?", "[rb]do?");
    row("gpl/portal", "agreement", "[rb]do?", "[rb]do?");
    row("qe/h5/login", "agreement", "[rb]do?", "[rb]do?");
    row("some/other", "agreement", "[rb]do?", "[rb]do?");
}

void RequestAddressTest::choosesTheAddress()
{
    QFETCH(QString, action);
    QFETCH(QString, start);
    QFETCH(QString, address);
    QFETCH(QString, localAddress);
    NetClient client(m_sandbox.hosts());
    client.manager.organization = u"school01"_qs;

    const auto check = [&](const QString &expected) {
        QCOMPARE(client.manager.addressOf(action, start, u"school01"_qs), expected);
        m_sandbox.takeRequests();
        client.connect(action, start);
        const auto received = m_sandbox.takeRequests();
        QCOMPARE(received.size(), 1);
        const QUrl url(expected);
        QCOMPARE(received.first().host, url.authority());
        QCOMPARE(received.first().path, url.path());
        QCOMPARE(received.first().query,
            "action=" + QUrl::toPercentEncoding(action) + "&start=" + start.toUtf8());
    };
    check(filledIn(address));
    if (QTest::currentTestFailed())
        return;
    client.setLocal(filledIn(u"[local]rb"_qs), filledIn(u"[local]rb/qe"_qs));
    check(filledIn(localAddress));
}

void RequestAddressTest::missingLocalServer_data()
{
    QTest::addColumn<bool>("isLocal");
    QTest::addColumn<QString>("localUrl");

    QTest::newRow("no address") << true << QString();
    QTest::newRow("empty address") << true << u""_qs;
    QTest::newRow("not in use") << false << m_sandbox.address(SandboxProcess::Local);
}

void RequestAddressTest::missingLocalServer()
{
    QFETCH(bool, isLocal);
    QFETCH(QString, localUrl);
    NetClient client(m_sandbox.hosts());
    client.setLocal(localUrl, {});
    client.loginModel.setIsLocal(isLocal);

    QCOMPARE(client.manager.addressOf(u"some/other"_qs, u"x"_qs, {}), m_sandbox.hosts().regions);
    // Where the school's own server is required but unknown there is nowhere to go.
    const Answer answer = client.connect(u"gpl/portal"_qs, u"login4H5"_qs);
    QCOMPARE(answer.status, 1);
    QVERIFY(answer.error);
    if (isLocal)
        QCOMPARE(answer.error->errorDescription, u"请求错误"_qs);
}

QTEST_GUILESS_MAIN(RequestAddressTest)
#include "RequestAddressTest.moc"
