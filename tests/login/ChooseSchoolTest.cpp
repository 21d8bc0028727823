#include "login/ChooseSchoolViewController.h"
#include "login/LoginHarness.h"

#include <QJsonArray>
#include <QTest>

using namespace Qt::StringLiterals;

using State = ChooseSchoolViewController::State;

class ChooseSchoolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void listsTheSchoolsAndKeepsTheAddresses();
    void anEmptyListStillHasAddresses();
    void failsWithTheServersTextAndTriesAgain();
    void handsOverTheChosenRow();
    void goesAwayWhileTheListIsUnderWay();

private:
    std::unique_ptr<SandboxProcess> m_sandbox;
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<ChooseSchoolViewController> m_chooser;
    QList<DataModel> m_selected;
};

void ChooseSchoolTest::initTestCase()
{
    m_sandbox = std::make_unique<SandboxProcess>(QStringList {u"--schools"_s, u"3000"_s});
    QVERIFY(m_sandbox->isRunning());
}

void ChooseSchoolTest::init()
{
    m_harness = std::make_unique<LoginHarness>(*m_sandbox);
    m_chooser = std::make_unique<ChooseSchoolViewController>(
        m_harness->environment(), [this](const DataModel &row) { m_selected << row; });
    m_selected.clear();
}

void ChooseSchoolTest::cleanup()
{
    m_chooser.reset();
    m_harness.reset();
}

void ChooseSchoolTest::listsTheSchoolsAndKeepsTheAddresses()
{
    m_chooser->viewDidLoad();
    QCOMPARE(m_harness->toast(), u"请稍后"_s);
    QCOMPARE(m_chooser->state(), State::Loading);
    QTRY_COMPARE(m_chooser->state(), State::Loaded);
    QVERIFY(m_harness->toast().isNull());
    QCOMPARE(m_chooser->schools()->rowCount(), 3000);
    QCOMPARE(m_chooser->schools()->sectionTitles().first(), u"#"_s);
    QVERIFY(m_chooser->schools()->sectionTitles().size() > 15);
    QVERIFY(m_harness->loginModel.qeCDN().endsWith(u"/qe/"));
    QCOMPARE(m_harness->askedFor(), QStringList {u"cndSite"_s});
}

void ChooseSchoolTest::anEmptyListStillHasAddresses()
{
    m_sandbox->setAnswer({{u"start"_s, u"cndSite"_s},
        {u"data"_s, QJsonObject {{u"rb_cdn"_s, u"r"_s}, {u"list"_s, QJsonArray()}}}});
    m_harness->loginModel.setQeCDN(u"old"_s);
    m_chooser->viewDidLoad();
    QTRY_COMPARE(m_chooser->state(), State::Loaded);
    QCOMPARE(m_chooser->schools()->rowCount(), 0);
    QCOMPARE(m_harness->loginModel.rbCDN(), u"r"_s);
    QVERIFY(m_harness->loginModel.qeCDN().isNull());
}

void ChooseSchoolTest::failsWithTheServersTextAndTriesAgain()
{
    m_sandbox->addFault({{u"start"_s, u"cndSite"_s}, {u"times"_s, 1},
        {u"body"_s, u"{\"code\":503,\"msg\":\"维护中\"}"_s}});
    m_chooser->viewDidLoad();
    QTRY_COMPARE(m_chooser->state(), State::Failed);
    QCOMPARE(m_chooser->failureText(), u"维护中"_s);
    QVERIFY(m_harness->toast().isNull());
    QCOMPARE(m_chooser->schools()->rowCount(), 0);

    m_chooser->load();
    QTRY_COMPARE(m_chooser->state(), State::Loaded);
    QCOMPARE(m_chooser->schools()->rowCount(), 3000);
}

void ChooseSchoolTest::handsOverTheChosenRow()
{
    m_chooser->viewDidLoad();
    m_chooser->didSelectRow(0);
    QVERIFY2(m_selected.isEmpty(), "there is no such row yet");
    QTRY_COMPARE(m_chooser->state(), State::Loaded);

    m_chooser->textDidChange(QString::fromUtf8(LoginHarness::localSchool));
    QTRY_COMPARE(m_chooser->schools()->rowCount(), 1);
    m_chooser->didSelectRow(0);
    m_chooser->didSelectRow(0);
    QCOMPARE(m_selected.size(), 1);
    const DataModel school = m_selected.first();
    QCOMPARE(school.aName, QString::fromUtf8(LoginHarness::localSchool));
    QVERIFY(school.isLocal);
    const QString server = u"http://"_s + m_sandbox->authority(SandboxProcess::Local);
    QVERIFY(school.url.startsWith(server));
    QVERIFY(school.url_qe.startsWith(server));
    QVERIFY(!school.site_id.isEmpty());
}

void ChooseSchoolTest::goesAwayWhileTheListIsUnderWay()
{
    m_chooser->viewDidLoad();
    m_chooser.reset();
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QVERIFY(m_harness->toast().isNull());
}

QTEST_GUILESS_MAIN(ChooseSchoolTest)
#include "ChooseSchoolTest.moc"
