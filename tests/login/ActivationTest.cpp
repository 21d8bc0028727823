#include "login/LoginHarness.h"
#include "login/enabling/PActivateViewController.h"
#include "login/enabling/STActivateViewController.h"
#include "login/enabling/STSetingAccountViewController.h"
#include "login/region/LoginViewController.h"
#include "support/Patience.h"
#include "ui/navigation/NavigationController.h"

using namespace Qt::StringLiterals;

namespace {

const QString pupilCard = u"350203201209124522"_s;

}

//! Enabling an account in its two steps, without a window, against a real school platform.
class ActivationTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox {{u"--schools"_s, u"20"_s}};
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController> m_login;
    std::unique_ptr<NavigationController> m_navigation;

    void start(bool isPatriarch)
    {
        m_harness->loginModel.setSchool(u"厦门实验小学"_s);
        m_harness->loginModel.setSiteCode(u"school01"_s);
        LoginEnvironment environment = m_harness->environment();
        environment.isPatriarch = isPatriarch;
        m_login = std::make_unique<LoginViewController>(environment);
        m_navigation = std::make_unique<NavigationController>(
            m_harness->shell.navigator(), m_login->screenName(), m_login.get());
        m_login->viewDidLoad();
        m_login->activate();
        QVERIFY(firstStep());
    }

    template <typename Controller>
    Controller *top() const
    {
        return qobject_cast<Controller *>(m_navigation->topViewController());
    }
    ActivateFormViewController *firstStep() const { return top<ActivateFormViewController>(); }
    STSetingAccountViewController *secondStep() const
    {
        return top<STSetingAccountViewController>();
    }

    void activate(const QString &holder, const QString &cartNo)
    {
        firstStep()->setHolder(holder);
        firstStep()->setCartNo(cartNo);
        firstStep()->activate();
    }

    void seting(const QString &account, const QString &password, const QString &confirmPassword)
    {
        secondStep()->setAccount(account);
        secondStep()->setPassword(password);
        secondStep()->setConfirmPassword(confirmPassword);
        secondStep()->seting();
    }

    //! What was asked, in short: "verifyAccount user_no=1 card_no=2".
    QString asked(const QStringList &names)
    {
        QStringList lines;
        for (const TracedRequest &call : m_harness->calls()) {
            QString line = call.value(u"start"_s);
            for (const QString &name : names) {
                if (!call.value(name).isNull())
                    line += u" %1=%2"_s.arg(name, call.value(name));
            }
            lines << line;
        }
        return lines.join(u", "_s);
    }

private Q_SLOTS:
    void init()
    {
        m_navigation.reset();
        m_login.reset();
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
        for (const QString &screen :
            {u"RegionLoginScreen"_s, u"ActivateScreen"_s, u"SetingAccountScreen"_s})
            m_harness->shell.navigator()->registerScreen(screen, QUrl(u"qrc:/x"_s));
    }

    void enablesAndSignsIn_data()
    {
        QTest::addColumn<bool>("isPatriarch");
        QTest::addColumn<QString>("holder");
        QTest::addColumn<QString>("cartNo");
        QTest::addColumn<QString>("verified");
        QTest::addColumn<QString>("greeting");
        QTest::addColumn<QString>("set");
        QTest::newRow("pupil") << false << u" 20240007 "_s << pupilCard
                               << u"verifyAccount user_no=20240007 card_no=350203201209124522"_s
                               << u"您好，曾可欣同学"_s << u"settingAccount user_id=u20240007"_s;
        QTest::newRow("teacher") << false << u"T1011"_s << u"35020419900101003x"_s
                                 << u"verifyAccount user_no=T1011 card_no=35020419900101003x"_s
                                 << u"您好，万俟海老师"_s << u"settingAccount user_id=uT1011"_s;
        QTest::newRow("parent")
            << true << u"曾德民"_s << u"350203198209120019"_s
            << u"verifyAccount_tea user_name=曾德民 card_no=350203198209120019"_s
            << u"您好，曾德民老师"_s << u"settingAccount_tea user_id=uP2007"_s;
    }

    void enablesAndSignsIn()
    {
        QFETCH(const bool, isPatriarch);
        QFETCH(const QString, holder);
        QFETCH(const QString, cartNo);
        start(isPatriarch);
        activate(holder, cartNo);
        firstStep()->activate();
        QCOMPARE(m_harness->shell.progressHUD()->text(), u"登录中"_s);
        TRY_VERIFY(secondStep());
        QTEST(asked({u"user_no"_s, u"user_name"_s, u"card_no"_s}), "verified");
        QCOMPARE(m_harness->toast(), u"激活成功"_s);
        QTEST(secondStep()->greeting(), "greeting");

        seting(u" neuling "_s, u" 123 456 "_s, u"123 456"_s);
        QCOMPARE(m_harness->shell.progressHUD()->text(), u"登录中"_s);
        TRY_COMPARE(m_navigation->topViewController(), m_login.get());
        QCOMPARE(m_harness->toast(), u"设置成功"_s);
        QFETCH(const QString, set);
        QCOMPARE(asked({u"user_id"_s, u"user_code"_s, u"user_pwd"_s}),
            set + u" user_code=neuling user_pwd=123 456"_s);
        QCOMPARE(m_navigation->screens()->rowCount(), 1);

        m_login->setAccount(u"neuling"_s);
        m_login->setPassword(u"123 456"_s);
        m_login->checkUserInstructions();
        m_login->login();
        TRY_VERIFY(m_harness->loginModel.isLogin());
    }

    void bearsBrokenAnswers_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("result"); // the greeting, or the toast
        const auto data
            = [](const QString &text) { return u"{\"code\":200,\"data\":%1}"_s.arg(text); };
        QTest::newRow("a list") << data(u"[1]"_s) << u"请求错误"_s;
        QTest::newRow("no id") << data(uR"({"user_name":"林"})"_s) << u"请求错误"_s;
        QTest::newRow("refused") << u"{\"code\":9,\"msg\":\"维护中\"}"_s << u"维护中"_s;
        QTest::newRow("numbers and texts")
            << data(uR"({"user_id":7,"user_type":"1","user_name":8})"_s) << u"您好，8同学"_s;
        QTest::newRow("type 0") << data(uR"({"user_id":"7","user_type":0,"user_name":"林"})"_s)
                                << u"您好，林老师"_s;
    }

    void bearsBrokenAnswers()
    {
        QFETCH(const QString, body);
        m_sandbox.addFault({{u"start"_s, u"verifyAccount"_s}, {u"body"_s, body}});
        start(false);
        activate(u"1"_s, pupilCard);
        QVERIFY(m_harness->callsEnd());
        QTEST(secondStep() ? secondStep()->greeting() : m_harness->toast(), "result");
    }

    void goesWhileItAsks()
    {
        start(false);
        activate(u"20240007"_s, pupilCard);
        m_navigation->pop();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        QVERIFY(m_harness->callsEnd() && m_harness->toast().isNull());
        QCOMPARE(m_navigation->topViewController(), m_login.get());
    }
};

QTEST_MAIN(ActivationTest)
#include "ActivationTest.moc"
