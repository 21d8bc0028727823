#include "login/LoginControllerFixture.h"

#include "ui/NavigationController.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

void LoginControllerFixture::initTestCase()
{
    m_sandbox = std::make_unique<SandboxProcess>(QStringList {u"--schools"_s, u"20"_s});
    QVERIFY(m_sandbox->isRunning());
}

void LoginControllerFixture::init()
{
    m_harness = std::make_unique<LoginHarness>(*m_sandbox);
    m_harness->shell.navigator()->registerScreen(u"ChooseSchoolScreen"_s, QUrl(u"qrc:/x"_s));
}

void LoginControllerFixture::cleanup()
{
    m_login.reset();
    m_harness.reset();
}

//! The screen as it stands when it has appeared for a user who chose a school earlier.
void LoginControllerFixture::start()
{
    m_harness->loginModel.setSchool(u"厦门实验小学"_s);
    m_harness->loginModel.setSiteCode(QString::fromLatin1(LoginHarness::school));
    m_login = std::make_unique<LoginViewController2>(m_harness->environment());
    m_login->viewDidLoad();
    m_login->viewDidAppear();
}

void LoginControllerFixture::fill(const QString &account, const QString &password)
{
    m_login->setAccount(account);
    m_login->setPassword(password);
    m_login->checkUserInstructions();
}

//! The chooser that is presented, with its list loaded.
ChooseSchoolViewController *LoginControllerFixture::chooser()
{
    auto *frame
        = qobject_cast<NavigationController *>(m_harness->shell.navigator()->topViewController());
    auto *chooser
        = frame ? qobject_cast<ChooseSchoolViewController *>(frame->topViewController()) : nullptr;
    if (!chooser)
        return nullptr;
    chooser->viewDidLoad();
    const bool loaded = QTest::qWaitFor(
        [&] { return chooser->state() == ChooseSchoolViewController::State::Loaded; });
    return loaded ? chooser : nullptr;
}
