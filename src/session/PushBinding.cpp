#include "session/PushBinding.h"

#include "model/LoginModel.h"
#include "model/StringFormat.h"
#include "net/LogMask.h"
#include "net/RequestInterface.h"
#include "platform/MainQueue.h"
#include "session/Logging.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto retryDelay = 3600s;
constexpr qint64 lastRetriedFailure = 9;

}

PushBinding::PushBinding(LoginModel *loginModel, RequestInterface *requests, MainQueue *mainQueue)
    : m_loginModel(loginModel)
    , m_requests(requests)
    , m_mainQueue(mainQueue)
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
    m_requests->bindGeTuiWithC_id(clientId, userId,
        [self = QPointer(this)](int status, const QJsonValue &data, const auto &) {
            if (!self)
                return;
            if (status == ResponseStatus::success) {
                qCDebug(lcSession).noquote()
                    << StringFormat::format(u"ResponseStateSuccess%@"_s, LogMask::answer(data));
                return;
            }
            qCDebug(lcSession).noquote()
                << StringFormat::format(u"ResponseStateFailed%@"_s, LogMask::answer(data));
            self->retryLater();
        });
}

void PushBinding::retryLater()
{
    if (regidFailedCount > lastRetriedFailure)
        return;
    ++regidFailedCount;
    m_mainQueue->after(retryDelay, this, [this] { bindGeTui(); });
}
