#include "net/NetClient.h"
#include "support/PlatformProcess.h"
#include "support/Table.h"

//! What a server receives, and at which address.
class RequestTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_platform.reset();
        m_client = std::make_unique<NetClient>(m_platform.hosts());
        m_client->requests.setOrganization(u"school01"_qs);
    }

    void choosesTheAddress_data()
    {
        constexpr auto rb = PlatformProcess::Rb;
        constexpr auto regions = PlatformProcess::Regions;
        // The path of the platform's, and that of a school's own server, null: the platform again.
        Addresses::rows({
            {"site", "rb/platform/site cndSite", rb, "do?", nullptr},
            {"regions", "qe/platform/regions tree", regions, "do?", nullptr},
            {"public", "api/public_all get", PlatformProcess::Public, "do?", nullptr},
            {"base", "base/platform/portal appUpdateInfo", PlatformProcess::Base, "do?", nullptr},
            {"qe/h5", "qe/h5/third bindIm", regions, "school01/do?", "rb/qe/do?"},
            {"gpl/", "gpl/common/hv/bind bindGeTui", rb, "school01/do?", "rb/qe/do?"},
            {"login", "rb/h5/login login", rb, "school01/do", "rb/do?"},
            {"portal", "gpl/portal login4H5", rb, "school01/do", "rb/do?"},
            {"teacher", "qe/h5/login login_tea", regions, "school01/do?", "qe/qe/do?"},
            {"some other", "some/other x", regions, "", "rb"},
            {"agreement", "gpl/portal agreement", rb, "do?", nullptr},
        });
    }

    void choosesTheAddress()
    {
        const auto [call, host, path, localPath] = Addresses::row();
        const QString action = QString::fromLatin1(call.split(' ')[0]);
        const QString start = QString::fromLatin1(call.split(' ')[1]);
        const QString local = m_platform.address(PlatformProcess::Local);
        const QString address = m_platform.address(host) + QString::fromLatin1(path);
        const QString localAddress = local + QString::fromLatin1(localPath);
        for (const QString &expected : {address, localPath.isNull() ? address : localAddress}) {
            m_client->connect(action, start);
            const TracedRequest request = received();
            QCOMPARE(request.host, QUrl(expected).authority());
            QCOMPARE(request.path, QUrl(expected).path());
            QCOMPARE(request.query,
                "action=" + QUrl::toPercentEncoding(action) + "&start=" + start.toUtf8());
            m_client->setLocal(local + u"rb"_qs, local + u"rb/qe"_qs);
        }
    }

    void everyCharacterArrivesUnchanged()
    {
        QString password = u"%41 %zz 中文 😀\n\t\"+&=%"_qs;
        for (char c = ' '; c <= '~'; ++c)
            password += QLatin1Char(c);
        for (const int type : {RequestItem::Get, RequestItem::Post}) {
            // The action and the start that are given beside the parameters win.
            m_client->connect(u"gpl/portal"_qs, u"login4H5"_qs, type,
                {{u"user_pwd"_qs, password}, {u"action"_qs, u"mine"_qs},
                    {u"start"_qs, u"mine"_qs}});
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

private:
    using Addresses = Table<QByteArray, PlatformProcess::Host, QByteArray, QByteArray>;

    TracedRequest received()
    {
        const auto requests = m_platform.takeRequests();
        return requests.size() == 1 ? requests.first() : TracedRequest();
    }

    PlatformProcess m_platform {{u"--schools"_qs, u"12"_qs}};
    std::unique_ptr<NetClient> m_client;
};

QTEST_GUILESS_MAIN(RequestTest)
#include "RequestTest.moc"
