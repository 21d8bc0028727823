#include "login/LoginHarness.h"
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

const QString noData = u"获取省市学校失败！"_s;

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

//! The older login screen's controller, without a window.
class LoginViewControllerTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox {{u"--schools"_s, u"20"_s}};
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController> m_login;

    void start()
    {
        m_login = std::make_unique<LoginViewController>(m_harness->environment());
        m_login->viewDidLoad();
        m_login->viewDidAppear();
    }

    PickerViewController *picker() const
    {
        return qobject_cast<PickerViewController *>(
            m_harness->shell.navigator()->topViewController());
    }

private Q_SLOTS:
    void init()
    {
        m_login.reset();
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
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
        TRY_COMPARE(m_harness->toast(), noData);
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
        Navigator *navigator = m_harness->shell.navigator();
        navigator->registerScreen(m_login->screenName(), QUrl(u"qrc:/x"_s));
        NavigationController frame(navigator, m_login->screenName(), m_login.get());
        navigator->setRootViewController(
            QString::fromLatin1(NavigationController::screenName), &frame);
        AskedSchool {u"厦门实验小学"_s, u"school01"_s, u"福建"_s, u"厦门"_s, false, {}, {}}.keep(
            &m_harness->defaults);
        m_harness->notifications.postNotificationName(
            u"WechatAuthCode"_s, QVariantMap {{u"code"_s, u"c"_s}, {u"state"_s, u"123"_s}});
        QCOMPARE(m_login->cityText(), u"福建-厦门"_s);
        QCOMPARE(m_login->schoolText(), u"厦门实验小学"_s);
        QCOMPARE(m_harness->requests.getCurrentOrganization(), u"school01"_s);
        QVERIFY(m_harness->callsEnd());
        TRY_VERIFY(!picker());
        m_login->textFieldShouldBeginEditing(Field::School);
        QVERIFY(picker());
        QVERIFY(picker()->firstTexts().contains(u"厦门实验小学"_s));
    }

    void goesWhileItAsks()
    {
        start();
        m_login->textFieldShouldBeginEditing(Field::Provinces);
        m_login.reset();
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        QVERIFY(m_harness->callsEnd() && !picker());
    }
};

QTEST_MAIN(LoginViewControllerTest)
#include "LoginViewControllerTest.moc"
