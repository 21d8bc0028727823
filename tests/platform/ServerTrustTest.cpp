#include "platform/HTTPSessionManager.h"
#include "platform/ServerTrust.h"
#include "support/PageServer.h"

#include <QNetworkAccessManager>
#include <QSslCertificate>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

//! Trust is the process's and cannot be taken back: the steps build on each other.
class ServerTrustTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void anUnknownCertificateIsRefused();
    void aFileWithoutCertificatesIsAnError();
    void anAddedAuthorityIsTrusted();
    void othersStayRefused();

private:
    //! Whether the server's page arrives.
    static bool reaches(const PageServer &server, QString address = {});

    PageServer m_server {"127.0.0.1", PageServer::Tls::SelfSigned};
    QTemporaryDir m_folder;
};

bool ServerTrustTest::reaches(const PageServer &server, QString address)
{
    if (address.isNull())
        address = server.url("/");
    // A fresh one: a connection that was made before keeps the trust of its time.
    QNetworkAccessManager network;
    std::optional<bool> reached;
    HTTPSessionManager(&network).GET(
        address, {}, [&](const auto &) { reached = true; },
        [&](const auto &, const auto &) { reached = false; });
    if (!QTest::qWaitFor([&] { return reached.has_value(); }))
        qFatal("no answer from %s", qPrintable(address));
    return *reached;
}

void ServerTrustTest::initTestCase()
{
    m_server.setPage("/", "secret");
}

void ServerTrustTest::anUnknownCertificateIsRefused()
{
    QVERIFY(!reaches(m_server));
    QVERIFY(m_server.requests().isEmpty());
    const QList chain = QSslCertificate::fromData(m_server.certificate());
    QVERIFY(!ServerTrust::isTrusted(chain, u"127.0.0.1"_s));
}

void ServerTrustTest::aFileWithoutCertificatesIsAnError()
{
    QFile text(m_folder.filePath(u"text.pem"_s));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("not a certificate\n");
    text.close();
    for (const QString &file : {text.fileName(), m_folder.filePath(u"missing.pem"_s)})
        QVERIFY2(ServerTrust::addAuthorities(file).startsWith(file + u": "_s), qPrintable(file));
    QVERIFY(!reaches(m_server));
}

void ServerTrustTest::anAddedAuthorityIsTrusted()
{
    QFile pem(m_folder.filePath(u"authority.pem"_s));
    QVERIFY(pem.open(QIODevice::WriteOnly));
    pem.write(m_server.certificate());
    pem.close();
    QCOMPARE(ServerTrust::addAuthorities(pem.fileName()), QString());
    QVERIFY(reaches(m_server));
}

void ServerTrustTest::othersStayRefused()
{
    PageServer stranger("127.0.0.1", PageServer::Tls::SelfSigned);
    stranger.setPage("/", "other");
    QVERIFY(!reaches(stranger));
    // The certificate names the address, not this name for it.
    QVERIFY(!reaches(m_server, u"https://localhost:%1/"_s.arg(m_server.port())));

    const QList trusted = QSslCertificate::fromData(m_server.certificate());
    QVERIFY(ServerTrust::isTrusted(trusted, u"127.0.0.1"_s));
    QVERIFY(!ServerTrust::isTrusted(trusted, u"127.0.0.2"_s));
    QVERIFY(!ServerTrust::isTrusted(
        QSslCertificate::fromData(stranger.certificate()), u"127.0.0.1"_s));
    QVERIFY(!ServerTrust::isTrusted({}, u"127.0.0.1"_s));
}

QTEST_GUILESS_MAIN(ServerTrustTest)
#include "ServerTrustTest.moc"
