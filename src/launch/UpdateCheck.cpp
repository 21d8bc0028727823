#include "launch/UpdateCheck.h"

#include "launch/Logging.h"
#include "model/DictionaryMapper.h"
#include "net/catalogue/RequestInterface.h"
#include "platform/desktop/UrlOpener.h"
#include "platform/time/NotificationCenter.h"
#include "session/UserSession.h"
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

UpdateCheck::UpdateCheck(const UpdateEnvironment &environment)
    : m_environment(environment)
{
    m_environment.notifications->addObserver(
        u"xhLaunchAdShowFinish"_s, this, [this](const QVariant &) {
            if (const auto update = std::exchange(m_waiting, std::nullopt))
                present(*update);
        });
}

void UpdateCheck::checkAppUpdate()
{
    m_environment.requests->checkAppUpdateWithCurNo(m_environment.build, applicationId,
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
    if (integerOf(data[u"bulid_no"]) <= leadingInteger(m_environment.build))
        return;
    showUpdate(DictionaryMapper::text(data[u"version_content"]),
        integerOf(data[u"is_force"]) != 0 ? Force::Yes : Force::No);
}

void UpdateCheck::showUpdate(const QString &message, Force isForce)
{
    const Update update {message, isForce};
    if (m_environment.launchAdShowing && m_environment.launchAdShowing())
        m_waiting = update;
    else
        present(update);
}

void UpdateCheck::present(const Update &update)
{
    Alert alert;
    alert.title = u"版本更新"_s;
    alert.message = update.message;
    if (update.isForce == Force::Yes) {
        alert.buttons = {Alert::confirm};
        alert.tag = ForcedTag;
    } else {
        alert.buttons = Alert::cancelOrConfirm();
        alert.tag = OptionalTag;
        alert.backButton = Alert::cancelButton;
    }
    m_environment.shell->alertView()->show(
        alert, [self = QPointer(this), tag = alert.tag](int buttonIndex) {
            if (self)
                self->clickedButtonAtIndex(tag, buttonIndex);
        });
}

void UpdateCheck::clickedButtonAtIndex(int tag, int buttonIndex)
{
    const bool forced = tag == ForcedTag && buttonIndex == 0;
    if (!forced && !(tag == OptionalTag && buttonIndex == Alert::confirmButton))
        return;
    const QUrl page(m_environment.officialHost + downloadPage);
    if (!m_environment.urlOpener->openURL(page))
        qCWarning(lcLaunch) << "no browser took the download page" << page;
    if (forced)
        m_environment.session->logout();
}
