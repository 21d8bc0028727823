#include "login/LoginHarness.h"
#include "login/enabling/PActivateViewController.h"
#include "login/enabling/STActivateViewController.h"
#include "login/enabling/STSetingAccountViewController.h"
#include "login/region/LoginViewController.h"
#include "login/region/RegionTree.h"
#include "login/screen/AskedSchool.h"
#include "support/Patience.h"
#include "ui/navigation/NavigationController.h"
#include "ui/picker/PickerViewController.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

using Field = LoginViewController::Field;

namespace {

const QString pupilCard = u"350203201209124522"_s;

QJsonArray json(const QString &text)
{
    return QJsonDocument::fromJson(text.toUtf8()).array();
}

//! "福建(厦门: 实验小学=school01; 福州:)"
QString written(const QList<AddressModel> &tree)
{
    QStringList provinces;
    for (const AddressModel &province : tree) {
        QStringList cities;
        for (const CityModel &city : province.list) {
            QString line = city.name + u':';
            for (const DistrictModel &district : city.list)
                line += u' ' + district.name + u'=' + district.school.site_code;
            cities << line;
        }
        provinces << u"%1(%2)"_s.arg(province.name, cities.join(u"; "_s));
    }
    return provinces.join(u' ');
}

}

//! The older login screen's controller, and enabling an account in its two steps from there,
//! without a window, against a real school platform.
class OlderLoginTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox {{u"--schools"_s, u"20"_s}};
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController> m_login;
    std::unique_ptr<NavigationController> m_navigation;

    void start(bool isPatriarch = false)
    {
        LoginEnvironment environment = m_harness->environment();
        environment.isPatriarch = isPatriarch;
        m_login = std::make_unique<LoginViewController>(environment);
        Navigator *navigator = m_harness->shell.navigator();
        m_navigation = std::make_unique<NavigationController>(
            navigator, m_login->screenName(), m_login.get());
        navigator->setRootViewController(
            QString::fromLatin1(NavigationController::screenName), m_navigation.get());
        m_login->viewDidLoad();
        m_login->viewDidAppear();
    }

    PickerViewController *picker() const
    {
        return qobject_cast<PickerViewController *>(
            m_harness->shell.navigator()->topViewController());
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

    void startToActivate(bool isPatriarch, const QString &holder, const QString &cartNo)
    {
        m_harness->loginModel.setSchool(u"厦门实验小学"_s);
        m_harness->loginModel.setSiteCode(u"school01"_s);
        start(isPatriarch);
        QVERIFY(m_harness->callsEnd());
        m_harness->calls();
        m_login->activate();
        QVERIFY(firstStep());
        firstStep()->setHolder(holder);
        firstStep()->setCartNo(cartNo);
        firstStep()->activate();
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

    void readsBrokenTrees_data()
    {
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("read");
        QTest::newRow("none") << u"[]"_s << u""_s;
        QTest::newRow("no nodes") << uR"([5, null, "甲", [], {}])"_s << u""_s;
        QTest::newRow("no names") << uR"([{"name":null,"children":[]}, {"name":{}}])"_s << u""_s;
        QTest::newRow("no children") << uR"([{"name":"甲"}, {"name":"乙","children":null},
            {"name":"丙","children":{"name":"丁"}}, {"name":"戊","children":["己", {"name":"庚"}]}])"_s
                                     << u"甲() 乙() 丙() 戊(庚:)"_s;
        QTest::newRow("no use of a school") << uR"([{"name":1,"children":[{"name":"乙","children":[
            {"full_name":"无码"}, {"site_code":"c"}, {"name":"不是","site_code":"d"}, 7,
            {"full_name":"好","site_code":9}, {"full_name":"好","site_code":"10"}]}]}])"_s
                                            << u"1(乙: 好=9 好=10)"_s;
    }

    void readsBrokenTrees()
    {
        QFETCH(const QString, tree);
        const auto read = RegionTree::read(json(tree));
        QTEST(written(read), "read");
        for (qsizetype i = 0; i < read.size(); ++i)
            QCOMPARE(read.at(i).index, int(i));
    }

    void anUnusableAnswerIsToldAndAskedForAgain_data()
    {
        QTest::addColumn<QString>("body");
        QTest::newRow("no object") << u"{\"code\":200,\"data\":[]}"_s;
        QTest::newRow("no list") << u"{\"code\":200,\"data\":{\"tree\":{\"name\":\"甲\"}}}"_s;
        QTest::newRow("not in one piece") << u"{\"code\":200,\"data\":{\"tree\":[{\"na"_s;
    }

    void anUnusableAnswerIsToldAndAskedForAgain()
    {
        QFETCH(const QString, body);
        m_sandbox.addFault({{u"start"_s, u"tree"_s}, {u"times"_s, 1}, {u"body"_s, body}});
        start();
        m_login->textFieldShouldBeginEditing(Field::Provinces);
        TRY_COMPARE(m_harness->toast(), u"获取省市学校失败！"_s);
        QVERIFY(!m_harness->shell.progressHUD()->isVisible() && !picker());
        m_login->textFieldShouldBeginEditing(Field::Provinces);
        TRY_VERIFY(picker());
    }

    void goesBackToTheSchoolThatWasAskedFor()
    {
        start();
        m_login->textFieldShouldBeginEditing(Field::Provinces);
        TRY_VERIFY(picker());
        picker()->confirm();
        picker()->left();
        TRY_VERIFY(!picker());
        AskedSchool {u"厦门实验小学"_s, u"school01"_s, u"福建"_s, u"厦门"_s, false, {}, {}}.keep(
            &m_harness->defaults);
        m_harness->notifications.postNotificationName(
            u"WechatAuthCode"_s, QVariantMap {{u"code"_s, u"c"_s}, {u"state"_s, u"123"_s}});
        QCOMPARE(m_login->cityText(), u"福建-厦门"_s);
        QCOMPARE(m_login->schoolText(), u"厦门实验小学"_s);
        QCOMPARE(m_harness->requests.getCurrentOrganization(), u"school01"_s);
        QVERIFY(m_harness->callsEnd());
        m_login->textFieldShouldBeginEditing(Field::School);
        QVERIFY(picker());
        QVERIFY(picker()->firstTexts().contains(u"厦门实验小学"_s));
    }

    void enablesAnAccount_data()
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

    void enablesAnAccount()
    {
        QFETCH(const bool, isPatriarch);
        QFETCH(const QString, holder);
        QFETCH(const QString, cartNo);
        QFETCH(const QString, set);
        startToActivate(isPatriarch, holder, cartNo);
        firstStep()->activate();
        QCOMPARE(m_harness->shell.progressHUD()->text(), u"登录中"_s);
        TRY_VERIFY(secondStep());
        QTEST(asked({u"user_no"_s, u"user_name"_s, u"card_no"_s}), "verified");
        QTEST(secondStep()->greeting(), "greeting");

        secondStep()->setAccount(u" neuling "_s);
        secondStep()->setPassword(u" 123 456 "_s);
        secondStep()->setConfirmPassword(u"123 456"_s);
        secondStep()->seting();
        QCOMPARE(m_harness->shell.progressHUD()->text(), u"登录中"_s);
        TRY_COMPARE(m_navigation->topViewController(), m_login.get());
        QCOMPARE(asked({u"user_id"_s, u"user_code"_s, u"user_pwd"_s}),
            set + u" user_code=neuling user_pwd=123 456"_s);
        QCOMPARE(m_navigation->screens()->rowCount(), 1);
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
        startToActivate(false, u"1"_s, pupilCard);
        QVERIFY(m_harness->callsEnd());
        QTEST(secondStep() ? secondStep()->greeting() : m_harness->toast(), "result");
    }

    void goesWhileItAsks()
    {
        startToActivate(false, u"20240007"_s, pupilCard);
        m_navigation->pop();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        QVERIFY(m_harness->callsEnd() && m_harness->toast().isNull());
        QCOMPARE(m_navigation->topViewController(), m_login.get());

        m_login->textFieldShouldBeginEditing(Field::Provinces);
        m_navigation.reset();
        m_login.reset();
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        QVERIFY(m_harness->callsEnd() && !picker());
    }
};

QTEST_MAIN(OlderLoginTest)
#include "OlderLoginTest.moc"
