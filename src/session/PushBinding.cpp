#include "session/PushBinding.h"

#include "model/LoginModel.h"
#include "model/StringFormat.h"
#include "net/catalogue/RequestInterface.h"
#include "net/request/LogMask.h"
#include "platform/time/MainQueue.h"
#include "session/Logging.h"
#include "session/UserSession.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto retryDelay = 3600s;
constexpr qint64 lastRetriedFailure = 9;

}

PushBinding::PushBinding(
    LoginModel *loginModel, RequestInterface *requests, MainQueue *mainQueue, UserSession *session)
    : m_loginModel(loginModel)
    , m_requests(requests)
    , m_mainQueue(mainQueue)
    , m_session(session)
{
}

void PushBinding::bindGeTui()
{
    const QString clientId = m_loginModel->c_id();
    if (clientId.isNull()) {
        qCDebug(lcSession) << "c_idisnull";
        return;
    }
    const QString userId = m_loginModel->userModel.value_or(UserModel()).user_id;
    m_session->own(m_requests->bindGeTuiWithC_id(clientId, userId,
        [self = QPointer(this), session = m_session->number()](
            int status, const QJsonValue &data, const auto &) {
            if (!self)
                return;
            if (status == ResponseStatus::success) {
                qCDebug(lcSession).noquote()
                    << StringFormat::format(u"ResponseStateSuccess%@"_s, LogMask::answer(data));
                return;
            }
            qCDebug(lcSession).noquote()
                << StringFormat::format(u"ResponseStateFailed%@"_s, LogMask::answer(data));
            if (session == self->m_session->number())
                self->retryLater();
        }));
}

void PushBinding::retryLater()
{
    if (regidFailedCount > lastRetriedFailure)
        return;
    ++regidFailedCount;
    bindGeTuiAfter(retryDelay);
}

void PushBinding::bindGeTuiAfter(std::chrono::milliseconds delay)
{
    m_mainQueue->after(delay, this, [this, session = m_session->number()] {
        if (session == m_session->number())
            bindGeTui();
    });
}
