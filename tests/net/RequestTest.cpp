#include "net/NetClient.h"
#include "support/PlatformProcess.h"
#include "support/Table.h"

#include <QSize>

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
        // It must not travel; what travels is the cookie storage.
        m_client->defaults.setObject(u"mo=1; Path=/"_qs, u"MiPushUsingCookie"_qs);
        const std::pair<DeviceIdentifier *, QString> identifiers[] {
            {&m_client->student, u"student"_qs}, {&m_client->patriarch, u"patriarch"_qs}};
        for (const auto &[identifier, key] : identifiers) {
            m_client->keychain.save(key, key == u"student" ? "PUPIL" : "PARENT");
            identifier->prepare();
        }
    }

    void asksAsThePlatformExpects_data()
    {
        using R = RequestInterface;
        const Place all {PlatformProcess::Rb, u"do"_qs};
        const Place portal {PlatformProcess::Rb, u"school01/do"_qs, u"rb/do"_qs};
        const Place third {PlatformProcess::Regions, u"school01/do"_qs, u"rb/qe/do"_qs};
        const Place push {PlatformProcess::Rb, u"school01/do"_qs, u"rb/qe/do"_qs};
        const Place parents {PlatformProcess::Regions, u"school01/do"_qs, u"qe/qe/do"_qs};
        const Place regions {PlatformProcess::Regions, u"do"_qs};
        const Place base {PlatformProcess::Base, u"do"_qs};
        const QString a(u'a'), b(u'b'), c(u'c'), d(u'd'), e(u'e'), f(u'f'), g(u'g'), h(u'h'),
            i(u'i');
        Operations::rows({
            {"rb/h5/login login", call(&R::studentTeacherLoginWithAccount, a, b), portal,
                "app_type=IOS client_code=PUPIL user_code=a user_pwd=b"},
            {"rb/h5/login login ", call(&R::studentAndTeacherLoginWithAccount, a, b), portal,
                "user_code=a user_pwd=b"},
            {"qe/h5/login login_tea", call(&R::patriarchalLoginWithAccount, a, b), parents,
                "app_type=IOS client_code=PARENT user_code=a user_pwd=b"},
            {"rb/h5/login verifyAccount", call(&R::verifyAccountWithUserNo, a, b), portal,
                "card_no=b user_no=a"},
            {"rb/h5/login verifyAccount_tea", call(&R::verifyPatriarchAccountWithUserName, a, b),
                portal, "card_no=b user_name=a"},
            {"rb/platform/site siteSearch", call(&R::requsetSiteWithSearchkey, a), all,
                "searchkey=a"},
            {"rb/h5/login settingAccount", call(&R::settingAccountWithUserID, a, b, c), portal,
                "user_code=b user_id=a user_pwd=c"},
            {"rb/h5/login settingAccount_tea", call(&R::settingPatriarchAccountWithUserID, a, b, c),
                portal, "user_code=b user_id=a user_pwd=c"},
            {"qe/platform/regions tree", call(&R::getSchoolDataWithResponse), regions, ""},
            {"base/platform/portal appUpdateInfo", call(&R::checkAppUpdateWithCurNo, a, b), base,
                "app_name=b app_os=IOS cur_bulid_no=a"},
            {"qe/h5/third bindIm", call(&R::bindUserInfoEntrance, a, b, c, d, e, f, g, h), third,
                "app_type=h dev_type=g entrance=a im_type=f reg_id=c site_id=b user_id=d "
                "user_type=e"},
            {"rb/platform/site cndSite", call(&R::requestSchoolInfo), all, ""},
            {"gpl/platform/portal getSetting4App", call(&R::requestSchoolLogo, a), all,
                "site_id=a"},
            {"gpl/platform/portal listAd4App", call(&R::requestAd, QSize(1125, 2436)), all,
                "resolution_pixel=1125*2436 terminal=ios"},
            {"gpl/common/hv/bind bindGeTui", call(&R::bindGeTuiWithC_id, a, b), push,
                "c_id=a dev_type=1 user_id=b"},
            {"gpl/common/hv/bind unBindGeTui", call(&R::unbindGeTuiWithC_id, a, b), push,
                "c_id=a user_id=b"},
            {"gpl/portal login4AppWeixin", call(&R::loginForAppWeixinWithCode, a, 2), portal,
                "code=a type=2"},
            {"gpl/portal login4H5",
                call(&R::accountBindWechatWithUserCode, a, b, c, d, e, f, g, h, i), portal,
                "bind_type=h login_type=i nick=e open_id=d sign=g timestamp=f union_id=c "
                "user_code=a user_pwd=b"},
            {"gpl/portal login4H5 ", call(&R::tokenLogin, a), portal, "login_token=a login_type=3"},
            {"gpl/platform/portal agreement", call(&R::requestAgreementUser), all, "type=1"},
            {"gpl/platform/portal agreement ", call(&R::requestAgreementPrivacy), all, "type=2"},
            // No operation of today's.
            {"gpl/portal agreement", {}, all, ""},
            {"api/public_all get", {}, {PlatformProcess::Public, u"do"_qs}, ""},
            {"some/other x", {}, {PlatformProcess::Regions, u""_qs, u"rb"_qs}, ""},
        });
    }

    void asksAsThePlatformExpects()
    {
        const auto [ask, place, parameters] = Operations::row();
        const QStringList words = QString::fromLatin1(QTest::currentDataTag()).split(u' ');
        QStringList pairs {u"action="_qs + words[0], u"start="_qs + words[1]};
        pairs += QString::fromLatin1(parameters).split(u' ', Qt::SkipEmptyParts);
        pairs.sort();
        const QString local = m_platform.address(PlatformProcess::Local);
        const QString address = m_platform.address(place.host) + place.path;
        for (const QString &expected :
            {address, place.localPath.isNull() ? address : local + place.localPath}) {
            if (ask)
                NetClient::await(
                    [&, &ask = ask](const auto &then) { ask(m_client->requests, then); });
            else
                m_client->connect(words[0], words[1]);
            TracedRequest request = received();
            QCOMPARE(request.method, u"GET"_qs);
            QCOMPARE(u"http://"_qs + request.host + request.path, expected);
            QStringList sent = QUrl::fromPercentEncoding(request.query).split(u'&');
            sent.sort();
            QCOMPARE(sent, pairs);
            for (const QString &ofTheSystem : {u"accept-encoding"_qs, u"accept-language"_qs})
                QVERIFY(!request.headers.take(ofTheSystem).isEmpty());
            QCOMPARE(request.headers,
                (QMap<QString, QString> {{u"accept"_qs, u"*/*"_qs}, {u"host"_qs, request.host},
                    {u"user-agent"_qs, u"vant-ios;client-st;"_qs}}));
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
    using Call = std::function<void(RequestInterface &, const ResponseCallback &)>;
    struct Place
    {
        PlatformProcess::Host host = PlatformProcess::Rb;
        QString path;
        QString localPath = {}; //!< of a school's own server; null: the platform again
    };
    using Operations = Table<Call, Place, QByteArray>;

    template <typename Operation, typename... Arguments>
    static Call call(Operation operation, const Arguments &...arguments)
    {
        return [=](RequestInterface &requests, const ResponseCallback &then) {
            (requests.*operation)(arguments..., then);
        };
    }

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
