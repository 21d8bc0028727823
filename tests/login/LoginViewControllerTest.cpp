#include "login/LoginViewController.h"
#include "login/LoginHarness.h"
#include "login/RegionTree.h"
#include "support/Patience.h"
#include "ui/PickerViewController.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

using Field = LoginViewController::Field;
using Status = NetworkReachabilityManager::Status;

namespace {

const QString noSchoolThere = u"您所选的地区没入驻学校，请确认选择的地区是否错误?"_s;
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

    static QString standsAt(const PickerViewController *picker)
    {
        return picker->firstTexts().value(picker->firstIndex()) + u'-'
            + picker->secondTexts().value(picker->secondIndex());
    }

    //! The view's part: it has moved out.
    void leave()
    {
        picker()->left();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!picker());
    }

    //! Touches the field and takes these rows of its picker.
    void pick(Field field, const QString &first, const QString &second = {})
    {
        QVERIFY(!m_login->textFieldShouldBeginEditing(field));
        TRY_VERIFY(picker());
        picker()->setFirstIndex(int(picker()->firstTexts().indexOf(first)));
        picker()->setSecondIndex(int(picker()->secondTexts().indexOf(second)));
        picker()->confirm();
        leave();
    }

    QString toastOf(Field field)
    {
        m_login->textFieldShouldBeginEditing(field);
        return m_harness->toast();
    }

private Q_SLOTS:
    void init()
    {
        m_login.reset();
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
    }

    void checksInOrderAndTrimsForIt_data()
    {
        QTest::addColumn<bool>("reachable");
        QTest::addColumn<QString>("siteCode");
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("toast");
        const QString site = u"school01"_s;
        QTest::newRow("network") << false << QString() << u""_s << u""_s << u"没有网络连接..."_s;
        QTest::newRow("school") << true << QString() << u""_s << u""_s << u"请选择学校"_s;
        QTest::newRow("account") << true << site << u" \t"_s << u"p"_s << u"请输入您的账号"_s;
        QTest::newRow("password") << true << site << u"a"_s << u"  "_s << u"请输入您的密码"_s;
        QTest::newRow("agreement") << true << site << u" a "_s << u" p "_s
                                   << u"请勾选已阅读同意《用户协议》和《隐私政策》"_s;
    }

    void checksInOrderAndTrimsForIt()
    {
        QFETCH(const bool, reachable);
        QFETCH(const QString, siteCode);
        QFETCH(const QString, account);
        QFETCH(const QString, password);
        m_harness->reachability.status = reachable ? Status::Unknown : Status::NotReachable;
        m_harness->loginModel.setSiteCode(siteCode);
        start();
        m_login->setAccount(account);
        m_login->setPassword(password);
        m_login->login();
        QTEST(m_harness->toast(), "toast");
        QCOMPARE(m_harness->askedFor(), QStringList());
    }

    void eachFieldNeedsTheOneBeforeIt()
    {
        start();
        QCOMPARE(toastOf(Field::City), u"请先选择省市"_s);
        QCOMPARE(toastOf(Field::School), u"请先选择省市"_s);
        QCOMPARE(toastOf(Field::Account), u"请先选择学校"_s);
        m_harness->mainQueue.advance(std::chrono::seconds(5));
        m_login->activate();
        QCOMPARE(m_harness->toast(), u"请先选择学校"_s);
        QVERIFY(!picker() && m_harness->askedFor().isEmpty());
    }

    void picksFromTheTreeAndSignsIn()
    {
        start();
        m_login->textFieldShouldBeginEditing(Field::Provinces);
        m_login->textFieldShouldBeginEditing(Field::Provinces);
        QCOMPARE(m_harness->shell.progressHUD()->text(), u"获取省市学校数据"_s);
        TRY_VERIFY(picker());
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        QCOMPARE(picker()->title(), u"选择省市"_s);
        QCOMPARE(standsAt(picker()), u"北京-北京"_s);
        picker()->setFirstIndex(3);
        picker()->cancel();
        leave();
        QCOMPARE(m_login->cityText(), u"选择城市"_s);

        pick(Field::Provinces, u"福建"_s, u"厦门"_s);
        QCOMPARE(m_login->provincesText() + u' ' + m_login->cityText(), u"福建 福建-厦门"_s);
        QVERIFY(!m_login->isSchoolChosen());
        pick(Field::School, u"厦门实验小学"_s);
        QCOMPARE(m_harness->requests.getCurrentOrganization(), u"school01"_s);
        QVERIFY(m_login->textFieldShouldBeginEditing(Field::Account));
        QCOMPARE(m_harness->askedFor(), QStringList {u"tree"_s});

        m_login->setAccount(u"student01"_s);
        QVERIFY(!m_login->isLoginEnabled());
        m_login->setPassword(u"vant1234"_s);
        QVERIFY(m_login->isLoginEnabled());
        m_login->checkUserInstructions();
        m_login->login();
        TRY_VERIFY(m_harness->loginModel.isLogin());
        const LoginModel &stored = m_harness->loginModel;
        QCOMPARE(QStringList({stored.provinces(), stored.city(), stored.school(), stored.siteCode(),
                     stored.userName()}),
            QStringList({u"福建"_s, u"厦门"_s, u"厦门实验小学"_s, u"school01"_s, u"student01"_s}));
        QVERIFY(m_login->account().isEmpty() && !m_harness->shell.progressHUD()->isVisible());

        // The next start knows the choice, and asks for the tree only to change it.
        start();
        QCOMPARE(m_login->cityText() + m_login->schoolText(), u"福建-厦门厦门实验小学"_s);
        m_harness->calls();
        m_login->textFieldShouldBeginEditing(Field::School);
        TRY_VERIFY(picker());
        QCOMPARE(picker()->firstTexts().value(picker()->firstIndex()), u"厦门实验小学"_s);
    }

    void anotherCityDropsTheSchool()
    {
        start();
        pick(Field::Provinces, u"福建"_s, u"厦门"_s);
        pick(Field::School, u"厦门实验小学"_s);
        m_login->setAccount(u"a"_s);
        m_login->setPassword(u"p"_s);
        pick(Field::City, u"福建"_s, u"厦门"_s);
        QVERIFY2(m_login->isSchoolChosen() && m_login->isLoginEnabled(), "the same city keeps it");
        pick(Field::City, u"新疆"_s, u"吐鲁番"_s);
        QCOMPARE(m_harness->toast(), noSchoolThere);
        QVERIFY(!m_login->isSchoolChosen() && !m_login->isLoginEnabled());
        QCOMPARE(m_login->cityText(), u"新疆-吐鲁番"_s);
        m_harness->mainQueue.advance(std::chrono::seconds(5));
        QCOMPARE(toastOf(Field::School), noSchoolThere);
        QVERIFY(!picker());
    }

    void takesOverWhatTheTreeSaysOfASchool_data()
    {
        QTest::addColumn<QString>("says");
        QTest::addColumn<QString>("stored"); // before: "1 old oldqe"
        QTest::newRow("nothing") << u""_s << u"1 old oldqe"_s;
        QTest::newRow("nulls") << uR"(,"is_local":null,"url":null,"url_qe":null)"_s
                               << u"1 old oldqe"_s;
        QTest::newRow("no objects")
            << uR"(,"is_local":{},"url":[1],"url_qe":{"a":1})"_s << u"1 old oldqe"_s;
        QTest::newRow("numbers") << uR"(,"is_local":0,"url":5,"url_qe":"u")"_s << u"0 5 u"_s;
        QTest::newRow("texts") << uR"(,"is_local":"2","url":"","url_qe":"u")"_s << u"1  u"_s;
        QTest::newRow("no number") << uR"(,"is_local":"x")"_s << u"0 old oldqe"_s;
        QTest::newRow("no number at all") << uR"(,"is_local":"")"_s << u"0 old oldqe"_s;
        QTest::newRow("yes or no") << uR"(,"is_local":true)"_s << u"1 old oldqe"_s;
    }

    void takesOverWhatTheTreeSaysOfASchool()
    {
        QFETCH(const QString, says);
        LoginModel &model = m_harness->loginModel;
        model.setIsLocal(true);
        model.setLocalUrl(u"old"_s);
        model.setLocalUrlQe(u"oldqe"_s);
        const auto tree = json(uR"([{"name":"甲","children":[{"name":"乙","children":[
            {"full_name":"一小","site_code":"c1"},
            {"full_name":"二小","site_code":"c2"%1}]}]}])"_s.arg(says));
        m_sandbox.setAnswer(
            {{u"start"_s, u"tree"_s}, {u"data"_s, QJsonObject {{u"tree"_s, tree}}}});
        start();
        pick(Field::Provinces, u"甲"_s, u"乙"_s);
        pick(Field::School, u"二小"_s);
        QCOMPARE(m_login->siteCode(), u"c2"_s);
        QTEST(u"%1 %2 %3"_s.arg(int(model.isLocal())).arg(model.localUrl(), model.localUrlQe()),
            "stored");
        QCOMPARE(m_login->isWechatLoginHidden(), model.isLocal());
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

    void aProvinceWithoutCitiesIsNoChoice()
    {
        m_sandbox.setAnswer({{u"start"_s, u"tree"_s},
            {u"data"_s, QJsonObject {{u"tree"_s, json(uR"([{"name":"甲"}])"_s)}}}});
        start();
        pick(Field::Provinces, u"甲"_s);
        QCOMPARE(m_harness->toast(), noSchoolThere);
        QCOMPARE(m_login->provincesText(), u"选择省份"_s);
    }

    void anUnusableAnswerIsToldAndAskedForAgain_data()
    {
        QTest::addColumn<QString>("body");
        QTest::newRow("refused") << u"{\"code\":500,\"msg\":\"维护中\"}"_s;
        QTest::newRow("no object") << u"{\"code\":200,\"data\":[]}"_s;
        QTest::newRow("no list") << u"{\"code\":200,\"data\":{\"tree\":{\"name\":\"甲\"}}}"_s;
        QTest::newRow("no province") << u"{\"code\":200,\"data\":{\"tree\":[{}]}}"_s;
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
