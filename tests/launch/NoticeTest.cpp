#include "launch/notices/JurisdictionNoticeView.h"
#include "launch/notices/PrivacyConsent.h"
#include "platform/services/DesktopShareSDK.h"
#include "session/SessionClient.h"
#include "support/PlatformProcess.h"
#include "ui/UiHarness.h"

#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>

#include <unistd.h>

Q_IMPORT_QML_PLUGIN(Vant_LaunchPlugin)

using namespace Qt::StringLiterals;

namespace {

const QString consentKey = QStringLiteral("JurisdictionNotice");
const QString noticeTitle = QStringLiteral("感谢您使用成长平台");

//! Notes what it is told about consent.
class NotedShareSDK : public DesktopShareSDK
{
public:
    NotedShareSDK()
        : DesktopShareSDK(nullptr, nullptr, nullptr, {})
    {
    }
    void uploadPrivacyPermissionStatus(bool agreed) override { told << agreed; }

    QList<bool> told;
};

//! A window over a login screen of nothing, and all that notices work with.
struct Bench
{
    explicit Bench(const DeploymentConfiguration::Hosts &hosts)
        : client(hosts)
    {
        ui.showRootView();
        ui.shell.navigator()->setRootViewController(u"Sample"_s, &root);
    }

    bool shows(const QString &text) const { return ui.itemWithText(text) != nullptr; }
    void click(const QString &text) { ui.click(ui.itemWithText(text)); }
    bool stored(const QString &key) { return client.defaults.boolForKey(key); }

    SessionClient client;
    UiHarness ui;
    ViewController root;
    NotedShareSDK shareSDK;
    int terminated = 0;
    PrivacyConsent consent {&client.defaults, &shareSDK, [this] { ++terminated; }};
    LaunchEnvironment environment {.shell = &ui.shell,
        .defaults = &client.defaults,
        .requests = &client.account.requests,
        .consent = &consent,
        .displayName = u"成长平台"_s,
        .contentHost = u"https://content/"_s,
        .openOutLinkPage = {}};
};

const QString refuseOption = QStringLiteral("--refuse");

// A program in the middle of its work, as far as that can be told apart on the disk.
int refuseIn(const QString &folder)
{
    UserDefaults defaults(folder + u"/settings.ini"_s);
    defaults.setBool(true, u"written"_s);
    defaults.synchronize();
    defaults.setBool(true, consentKey);
    DesktopShareSDK shareSDK {nullptr, nullptr, nullptr, {}};
    PrivacyConsent(&defaults, &shareSDK, [] { ::_exit(EXIT_SUCCESS); }).refuse();
    return EXIT_FAILURE;
}

}

//! What asks for consent, and the guide.
class NoticeTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox;
    std::unique_ptr<Bench> m_bench;

private Q_SLOTS:
    void init()
    {
        m_sandbox.reset();
        m_bench.reset();
        m_bench = std::make_unique<Bench>(m_sandbox.hosts());
    }

    void theNoticeSaysAllAndStaysUntilItIsAnswered()
    {
        JurisdictionNoticeView::showUntilAccepted(m_bench->environment);
        TRY_VERIFY(m_bench->shows(noticeTitle));
        for (const QString &text :
            {u"为了向您提供核心功能 (例如，绑定家长用户，学生成长手册，推送提醒，找回密码等)，我们向您收集以下敏感个人信息："_s,
                u"您的信息仅用于学校管理，我方不擅自使用与泄露您的个人信息。如果您不向我们提供上述敏感个人信息或者您不同意我们收集和使用此类信息，产品 (或服务) 可能无法正常运行，并且我们将无法为您提供服务，如果同意我们承诺我们所搜集的内容信息将通过国密算法加密保证您的信息安全性。"_s})
            QVERIFY2(m_bench->shows(text), qPrintable(text));
        QTest::keyClick(&m_bench->ui.view, Qt::Key_Escape);
        m_bench->click(u"暂不使用"_s);
        QCOMPARE(m_bench->terminated, 1);
        QVERIFY(m_bench->shows(noticeTitle) && !m_bench->stored(consentKey)
            && m_bench->shareSDK.told.isEmpty());

        QSignalSpy given(&m_bench->consent, &PrivacyConsent::given);
        m_bench->click(u"同意"_s);
        TRY_VERIFY(!m_bench->shows(noticeTitle));
        QCOMPARE(m_bench->shareSDK.told, QList<bool> {true});
        QVERIFY(m_bench->stored(consentKey));
        QCOMPARE(given.size(), 1);
        JurisdictionNoticeView::showUntilAccepted(m_bench->environment);
        QVERIFY(!m_bench->shows(noticeTitle));
    }

    void aRefusalEndsTheProgramAndWritesNothingMore()
    {
        const QString folder = m_bench->client.folder.path() + u"/refused"_s;
        QDir().mkpath(folder);
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(QCoreApplication::applicationFilePath(), {refuseOption, folder});
        QVERIFY(program.waitForFinished(patienceMs));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), EXIT_SUCCESS);
        const UserDefaults left(folder + u"/settings.ini"_s);
        QVERIFY(left.boolForKey(u"written"_s) && !left.boolForKey(consentKey));
    }
};

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == refuseOption)
        return refuseIn(arguments[2]);
    NoticeTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "NoticeTest.moc"
