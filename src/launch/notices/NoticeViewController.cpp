#include "launch/notices/NoticeViewController.h"

#include "launch/notices/PrivacyConsent.h"
#include "ui/shell/Shell.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QString privacyPage = QStringLiteral("cdn_pkg/vant_mo/ysixieyi.html");

}

NoticeViewController::NoticeViewController(
    const LaunchEnvironment &environment, const QString &screenName)
    : m_environment(environment)
    , m_screenName(screenName)
{
}

void NoticeViewController::showInViewController()
{
    Navigator *navigator = m_environment.shell->navigator();
    navigator->registerScreen(
        m_screenName, QUrl(u"qrc:/qt/qml/Vant/Launch/"_s + m_screenName + u".qml"_s));
    navigator->presentOverRoot(m_screenName, this);
}

void NoticeViewController::onHide()
{
    m_environment.shell->navigator()->dismiss(this);
}

void NoticeViewController::agree()
{
    m_environment.consent->agree();
    onHide();
}

void NoticeViewController::refuse()
{
    m_environment.consent->refuse();
}

void NoticeViewController::didSelectLink(const QString &name)
{
    if (name == u"privacy")
        m_environment.openOutLinkPage(m_environment.contentHost + privacyPage, u"用户和隐私协议"_s);
}
