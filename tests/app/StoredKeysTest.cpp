#include "app/DelegateClient.h"
#include "launch/guide/UserGuideAuthorizationTipView.h"
#include "launch/notices/LaunchEnvironment.h"
#include "login/screen/AskedSchool.h"
#include "login/school/LoginViewController2.h"
#include "model/SecretSettings.h"
#include "net/catalogue/SiteConfiguration.h"
#include "net/shared/OMShareGlobalInfo.h"
#include "net/shared/OMShareUserInfo.h"
#include "support/PlatformProcess.h"
#include "web/WebTestMain.h"

#include <QSettings>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! What a life of the client leaves for the next version of it: every name, and the form of what
//! stands under it.
class StoredKeysTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_platform {{u"--schools"_s, u"12"_s}};
    std::unique_ptr<DelegateClient> m_client;

    //! A first start, a login with a password, and the portal.
    void live()
    {
        DelegateClient &client = *m_client;
        LoginModel &model = client.loginModel();
        model.setProvinces(u"福建"_s);
        model.setCity(u"厦门"_s);
        model.setSchool(u"厦门实验小学"_s);
        model.setSiteCode(u"school01"_s);
        client.delegate.didFinishLaunchingWithOptions({});
        client.launch.consent()->agree();
        UserGuideAuthorizationTipView({.shell = &client.shell,
                                          .defaults = &client.session.defaults,
                                          .requests = &client.account.requests,
                                          .consent = client.launch.consent(),
                                          .displayName = {},
                                          .contentHost = {},
                                          .openOutLinkPage = {}})
            .agree();
        auto *login = qobject_cast<LoginViewController2 *>(client.delegate.loginVC());
        QVERIFY(login);
        login->viewDidLoad();
        login->setAccount(u"student01"_s);
        login->setPassword(u"vant1234"_s);
        login->checkUserInstructions();
        login->login();
        TRY_VERIFY(!client.session.isWaiting() && model.isLogin());
        client.delegate.backGroundloginInWithRefresh(true, [] {});
        TRY_VERIFY(!client.session.isWaiting());
        client.mainQueue.advance(1s);
        TRY_VERIFY(model.isNotBeforeVersion());
    }

    //! And what comes to few, or not by itself.
    void use()
    {
        DelegateClient &client = *m_client;
        UserDefaults &defaults = client.session.defaults;
        LoginModel &model = client.loginModel();
        const SiteConfiguration sites(&client.account.requests, &model);
        answerOf<int>([&](const auto &then) {
            sites.load([then](int status, const auto &, const auto &) { then(status); });
        });
        Q_EMIT client.stage.pushClient.didRegisterClient(u"cid-1"_s);
        client.pushRegistration.keep({{u"title"_s, u"t"_s}});
        client.stage.portal.pageProfiles.renew();
        AskedSchool {u"n"_s, u"s"_s, {}, {}, true, {}, {}}.keep(&defaults);
        BrowserWXApi wechat(&client.stage.urlOpener, nullptr, &defaults, u"https://w.example/"_s);
        QVERIFY(wechat.registerApp(u"wx1"_s, {}) && wechat.sendAuthReq(u"scope"_s, u"state"_s));
        model.setIsLocal(true);
        model.setLocalUrl(u"http://l/"_s);
        model.setLocalUrlQe(u"http://q/"_s);
        model.setLocalRegid(u"r"_s);
        OMShareGlobalInfo global(&defaults);
        global.httpCookieParam = {u"s"_s, u"n"_s, u"c"_s};
        global.saveHttpCookieParam();
        OMShareUserInfo user(&defaults);
        user.setUser_id(u"id"_s);
        user.setUserName(u"name"_s);
        user.setHead_url(u"head"_s);
        user.setUserSex(u"1"_s);
        user.setMyMovieCount(7);
        user.setTheLastTime(u"time"_s);
        user.setIsLogin(true);
    }

private Q_SLOTS:
    void init()
    {
        DeploymentConfiguration configuration;
        configuration.hosts = m_platform.hosts();
        m_client = std::make_unique<DelegateClient>(configuration);
    }

    void everyNameAndWhatStandsUnderIt()
    {
        live();
        use();
        const LoginModel &model = m_client->loginModel();
        QStringList expected
            = u"isLoginForST=true loginTokenForST=%1 userNameForST=student01 "
              "passwordForST=vant1234 provincesForST=福建 cityForST=厦门 schoolForST=厦门实验小学 "
              "siteCodeForST=school01 isLocalForST=true localUrlForST=http://l/ "
              "localUrlQeForST=http://q/ isHiddenWechatLogin=false cid=cid-1 localRegid=r "
              "terminalCdn=%2terminal/ rbCdn=%2rb/ baseCdn=%2base/ registerCdn=%2register/ "
              "zzrbCdn=%2zzrb/ qeCdn=%2qe/ isLoginOut=true isFirstInstall=true "
              "isNotBeforeVersion=true vantCookies:QVariantList GTPushCid=getCidSuccess "
              "MiPushUsingCookie:QString k_HttpCookieParam:QVariantMap redirect_url=%3 "
              "JurisdictionNotice=true UserGuideAuthorizationTip=true user_id=id userName=name "
              "head_url=head userSex=1 myMovieCount=7 theLastTime=time isLogin=true "
              // The client's own.
              "LastUser=school01/%4 PushWaiting:QVariantList PageFolder=2 "
              "WechatLoginSchool:QVariantMap WechatAuthRequest:QVariantMap"_s
                  .arg(model.login_token(), m_platform.address(PlatformProcess::Content),
                      model.redirect_url, model.userModel->user_id)
                  .split(u' ');
        expected.sort();
        // Of the file itself the process knows more than it holds.
        const QString copy = m_client->session.folder.filePath(u"copy.ini"_s);
        const auto keys = [&] {
            QFile::remove(copy);
            QFile::copy(m_client->session.folder.filePath(u"settings.ini"_s), copy);
            return QSettings(copy, QSettings::IniFormat).allKeys();
        };
        TRY_COMPARE(keys().size(), expected.size());
        UserDefaults next(copy, &m_client->session.keychain, secretSettings);
        bool isReadable = false;
        next.whenReadable([&] { isReadable = true; });
        TRY_VERIFY(isReadable);
        QStringList stored;
        for (const QString &key : QSettings(copy, QSettings::IniFormat).allKeys()) {
            const QVariant value = next.objectForKey(key);
            const bool isWord = value.canConvert<QString>() && !value.toString().contains(u' ');
            stored << (isWord ? key + u'=' + value.toString()
                              : key + u':' + QString::fromLatin1(value.typeName()));
        }
        stored.sort();
        QCOMPARE(stored, expected);
        QCOMPARE(next.objectForKey(u"k_HttpCookieParam"_s).toMap(),
            (QVariantMap {{u"SSO_COOKIE"_s, u"s"_s}, {u"_SESSIONID_COOKIE_NAME"_s, u"n"_s},
                {u"ck_ClientId"_s, u"c"_s}}));
        QCOMPARE(m_client->session.savedCookieNames(), (QStringList {u"mo"_s, u"tmo"_s}));
    }

    void theIdentifiersInTheKeychain()
    {
        Account &account = m_client->account;
        const std::pair<DeviceIdentifier *, QString> rows[] {
            {&account.studentIdentifier, u"cn.vant.student"_s},
            {&account.patriarchIdentifier, u"cn.vant.patriarch"_s}};
        for (const auto &[identifier, key] : rows) {
            identifier->prepare();
            TRY_VERIFY(!identifier->uuid().isNull());
            using Item = std::optional<QByteArray>;
            QCOMPARE(answerOf<Item>([&, &key = key](const auto &then) {
                m_client->session.keychain.load(key, then);
            }),
                Item(identifier->uuid().toUtf8()));
        }
    }
};

VANT_WEB_TEST_MAIN(StoredKeysTest)
#include "StoredKeysTest.moc"
