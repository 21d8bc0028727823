#include "session/SessionClient.h"
#include "support/SandboxProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class PushBindingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void bindsTheUser();
    void withoutAClientIdNothingIsSent();
    void elevenFailuresMakeTenRetries();
    void aRetryThatSucceedsIsTheLast();
    void aRetryUsesWhatIsKnownThen();

private:
    LoginModel &model() { return m_client->net.loginModel; }
    void failBindings(int times);
    //! The bindings that the platform received, after all of them are answered.
    QList<TracedRequest> settled();

    SandboxProcess m_sandbox;
    std::unique_ptr<SessionClient> m_client;
};

void PushBindingTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

void PushBindingTest::init()
{
    m_sandbox.reset();
    m_client = std::make_unique<SessionClient>(m_sandbox.hosts());
    m_client->net.requests.setOrganization(u"school01"_s);
    model().setC_id(u"cid-1"_s);
    model().userModel = UserModel();
    model().userModel->user_id = u"u20230101"_s;
}

void PushBindingTest::failBindings(int times)
{
    m_sandbox.addFault({{u"start"_s, u"bindGeTui"_s}, {u"times"_s, times},
        {u"body"_s, QJsonObject {{u"code"_s, 500}, {u"msg"_s, u"稍后再试"_s}}}});
}

QList<TracedRequest> PushBindingTest::settled()
{
    if (!QTest::qWaitFor([&] { return !m_client->isWaiting(); }, 20'000))
        qFatal("no answer");
    return m_sandbox.takeRequests();
}

void PushBindingTest::bindsTheUser()
{
    m_client->binding.bindGeTui();
    const QList<TracedRequest> requests = settled();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests[0].path, u"/school01/do"_s);
    QCOMPARE(requests[0].value(u"action"_s), u"gpl/common/hv/bind"_s);
    QCOMPARE(requests[0].value(u"c_id"_s), u"cid-1"_s);
    QCOMPARE(requests[0].value(u"user_id"_s), u"u20230101"_s);
    QCOMPARE(requests[0].value(u"dev_type"_s), u"1"_s);

    m_client->mainQueue.advance(24h);
    QCOMPARE(settled().size(), 0);
    QCOMPARE(m_client->binding.regidFailedCount, 0);
}

void PushBindingTest::withoutAClientIdNothingIsSent()
{
    model().setC_id(QString());
    m_client->binding.bindGeTui();
    QVERIFY(!m_client->isWaiting());
    // An id that comes later waits for the next login.
    model().setC_id(u"cid-2"_s);
    m_client->mainQueue.advance(24h);
    QCOMPARE(settled().size(), 0);
}

void PushBindingTest::elevenFailuresMakeTenRetries()
{
    failBindings(1000);
    m_client->binding.bindGeTui();
    QCOMPARE(settled().size(), 1);
    for (int retry = 1; retry <= 10; ++retry) {
        QCOMPARE(m_client->binding.regidFailedCount, retry);
        m_client->mainQueue.advance(3599s);
        QCOMPARE(settled().size(), 0);
        m_client->mainQueue.advance(1s);
        QCOMPARE(settled().size(), 1);
    }
    QCOMPARE(m_client->binding.regidFailedCount, 10);
    m_client->mainQueue.advance(24h);
    QCOMPARE(settled().size(), 0);

    // The process's ten are used up.
    m_client->binding.bindGeTui();
    QCOMPARE(settled().size(), 1);
    m_client->mainQueue.advance(24h);
    QCOMPARE(settled().size(), 0);
}

void PushBindingTest::aRetryThatSucceedsIsTheLast()
{
    failBindings(2);
    m_client->binding.bindGeTui();
    settled();
    m_client->mainQueue.advance(3600s);
    settled();
    m_client->mainQueue.advance(3600s);
    QCOMPARE(settled().size(), 1);
    QCOMPARE(m_client->binding.regidFailedCount, 2);
    m_client->mainQueue.advance(24h);
    QCOMPARE(settled().size(), 0);
}

void PushBindingTest::aRetryUsesWhatIsKnownThen()
{
    failBindings(1);
    m_client->binding.bindGeTui();
    settled();
    model().setC_id(u"cid-2"_s);
    m_client->mainQueue.advance(3600s);
    QCOMPARE(settled().constFirst().value(u"c_id"_s), u"cid-2"_s);
}

QTEST_GUILESS_MAIN(PushBindingTest)
#include "PushBindingTest.moc"
