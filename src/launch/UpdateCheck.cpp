#include "launch/UpdateCheck.h"

#include "launch/Logging.h"
#include "model/DictionaryMapper.h"
#include "platform/Device.h"
#include "platform/desktop/UrlOpener.h"
#include "platform/time/NotificationCenter.h"
#include "session/Account.h"
#include "ui/shell/Shell.h"

#include <QPointer>
#include <QUrl>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

const QString applicationId = QStringLiteral("vant_moqe_st");
const QString downloadPage = QStringLiteral("pages/official/h5/download.jsp");

// As such numbers are read: what stands before anything else, 0 where there is none.
qint64 leadingInteger(const QString &text)
{
    return std::strtoll(text.toUtf8().constData(), nullptr, 10);
}

qint64 integerOf(const QJsonValue &value)
{
    return leadingInteger(DictionaryMapper::text(value));
}

}

UpdateCheck::UpdateCheck(const Device &device, Account *account, Shell *shell,
    const DeploymentConfiguration &configuration, std::function<bool()> launchAdShowing)
    : m_account(account)
    , m_shell(shell)
    , m_urlOpener(device.urlOpener)
    , m_build(configuration.app.build)
    , m_officialHost(configuration.hosts.official)
    , m_launchAdShowing(std::move(launchAdShowing))
{
    device.notifications->addObserver(u"xhLaunchAdShowFinish"_s, this, [this](const QVariant &) {
        if (const auto update = std::exchange(m_waiting, std::nullopt))
            present(*update);
    });
}

void UpdateCheck::checkAppUpdate()
{
    m_account->requests.checkAppUpdateWithCurNo(m_build, applicationId,
        [self = QPointer(this)](int status, const QJsonValue &data, const auto &) {
            if (self)
                self->didAnswer(status, data);
        });
}

// Of the two kinds of success only the first counts.
void UpdateCheck::didAnswer(int status, const QJsonValue &data)
{
    if (status != ResponseStatus::success)
        return;
    if (integerOf(data[u"bulid_no"]) <= leadingInteger(m_build))
        return;
    showUpdate(DictionaryMapper::text(data[u"version_content"]),
        integerOf(data[u"is_force"]) != 0 ? Force::Yes : Force::No);
}

void UpdateCheck::showUpdate(const QString &message, Force isForce)
{
    const Update update {message, isForce};
    if (m_launchAdShowing && m_launchAdShowing())
        m_waiting = update;
    else
        present(update);
}

void UpdateCheck::present(const Update &update)
{
    const QString title = u"版本更新"_s;
    Alert alert = update.isForce == Force::Yes
        ? Alert {.title = title, .message = update.message, .buttons = {Alert::confirm}}
        : Alert::question(title, update.message);
    alert.tag = update.isForce == Force::Yes ? ForcedTag : OptionalTag;
    m_shell->alertView()->show(alert, [self = QPointer(this), tag = alert.tag](int buttonIndex) {
        if (self)
            self->clickedButtonAtIndex(tag, buttonIndex);
    });
}

void UpdateCheck::clickedButtonAtIndex(int tag, int buttonIndex)
{
    const bool forced = tag == ForcedTag && buttonIndex == 0;
    if (!forced && !(tag == OptionalTag && buttonIndex == Alert::confirmButton))
        return;
    const QUrl page(m_officialHost + downloadPage);
    if (!m_urlOpener->openURL(page))
        qCWarning(lcLaunch) << "no browser took the download page" << page;
    if (forced)
        m_account->session.logout();
}
