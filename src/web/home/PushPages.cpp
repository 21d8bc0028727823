#include "web/home/PushPages.h"

#include "model/LoginModel.h"
#include "model/StringFormat.h"
#include "session/UserSession.h"
#include "ui/feedback/AlertView.h"
#include "web/engine/WebView.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

// Empty: the notification opens nothing.
QUrl pageOf(const QVariant &userInfo)
{
    const QVariant payload = userInfo.toMap().value(u"payload"_s);
    if (payload.metaType().id() != QMetaType::QString)
        return {};
    const QUrl url(payload.toString(), QUrl::StrictMode);
    // A script or a file of the device must not come in by a message.
    return url.scheme() == u"http" || url.scheme() == u"https" ? url : QUrl();
}

}

PushPages::PushPages(
    WebView *webView, AlertView *alertView, LoginModel *loginModel, UserSession *session)
    : m_webView(webView)
    , m_alertView(alertView)
    , m_loginModel(loginModel)
{
    connect(session, &UserSession::ending, this, &PushPages::withdrawQuestions);
}

void PushPages::backloadNewWeb(const QVariant &userInfo)
{
    const QUrl page = pageOf(userInfo);
    if (page.isEmpty())
        return;
    m_url = page;
    m_webView->load(m_url);
}

void PushPages::loadNewWeb(const QVariant &userInfo)
{
    const QUrl page = pageOf(userInfo);
    if (page.isEmpty())
        return;
    m_url = page;
    m_activeArray << m_url;
    const bool isTeacher
        = m_loginModel->userModel && m_loginModel->userModel->user_type == UserModel::teacherType;
    const Alert alert = Alert::question(u"提醒"_s,
        StringFormat::format(u"%@收到一条消息，是否点击查看？"_s, isTeacher ? u"您"_s : u"你"_s));
    const int id = ++m_lastQuestion;
    const int number = m_alertView->show(alert, [self = QPointer(this), id](int button) {
        if (!self)
            return;
        self->m_questions.remove(id);
        if (button == Alert::confirmButton)
            self->m_webView->load(self->m_url);
    });
    m_questions.insert(id, {number, userInfo.toMap()});
}

// They are the user's, and nobody else's.
void PushPages::withdrawQuestions()
{
    for (const Question &question : std::exchange(m_questions, {})) {
        m_alertView->withdraw(question.number);
        Q_EMIT unanswered(question.userInfo);
    }
}
