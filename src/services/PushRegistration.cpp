#include "services/PushRegistration.h"

#include "model/LoginModel.h"
#include "platform/push/PushClient.h"
#include "platform/storage/UserDefaults.h"
#include "platform/time/NotificationCenter.h"
#include "services/Logging.h"
#include "session/UserSession.h"

using namespace Qt::StringLiterals;

namespace {

const QString outcomeKey = QStringLiteral("GTPushCid");
const QString waitingKey = QStringLiteral("PushWaiting");
const QString foregroundNotification = QStringLiteral("GeTuiPushLoadNewWeb");

}

PushRegistration::PushRegistration(PushClient *client,
    const DeploymentConfiguration::Push &credentials, LoginModel *loginModel,
    UserDefaults *defaults, NotificationCenter *notifications, UserSession *session)
    : m_client(client)
    , m_credentials(credentials)
    , m_loginModel(loginModel)
    , m_defaults(defaults)
    , m_notifications(notifications)
    , m_session(session)
{
    for (const QVariant &userInfo : defaults->objectForKey(waitingKey).toList())
        m_waiting << userInfo.toMap();
    connect(client, &PushClient::didRegisterClient, this, &PushRegistration::didRegisterClient);
    connect(client, &PushClient::didOccurError, this, &PushRegistration::didOccurError);
    connect(client, &PushClient::willPresentNotification, this,
        &PushRegistration::willPresentNotification);
    connect(client, &PushClient::didReceiveNotification, this,
        &PushRegistration::didReceiveNotification);
    // Who observes from now on may be in the middle of its start.
    connect(notifications, &NotificationCenter::observerAdded, this, &PushRegistration::postWaiting,
        Qt::QueuedConnection);
    connect(session, &UserSession::begun, this, &PushRegistration::postWaiting);
    connect(session, &UserSession::userChanging, this, [this] {
        m_waiting.clear();
        storeWaiting();
    });
}

void PushRegistration::start()
{
    startSdk();
    m_client->registerRemoteNotification(PushClient::Badge | PushClient::Sound | PushClient::Alert);
}

void PushRegistration::bindGeTuiAgain()
{
    isBindGeTuiAgain = true;
    startSdk();
}

void PushRegistration::startSdk()
{
    m_client->startSdk(m_credentials.appId, m_credentials.appKey, m_credentials.appSecret);
}

void PushRegistration::resetBadge()
{
    m_client->resetBadge();
}

void PushRegistration::didRegisterClient(const QString &clientId)
{
    m_loginModel->setC_id(clientId);
    m_defaults->setObject(u"getCidSuccess"_s, outcomeKey);
    m_defaults->synchronize();
    if (isBindGeTuiAgain)
        m_notifications->postNotificationName(u"STOPNSTimer"_s);
}

void PushRegistration::didOccurError(const QString &error)
{
    qCInfo(lcServices) << "push registration failed:" << error;
    m_defaults->setObject(u"getCidFailed"_s, outcomeKey);
    m_defaults->synchronize();
}

void PushRegistration::willPresentNotification(const QVariantMap &userInfo)
{
    m_loginModel->messageCount = 0;
    isAppBackground = false;
    keep(userInfo);
    postWaiting();
}

void PushRegistration::keep(const QVariantMap &userInfo)
{
    m_waiting << userInfo;
    storeWaiting();
}

void PushRegistration::postWaiting()
{
    if (m_waiting.isEmpty() || !m_session->isActive()
        || !m_notifications->isObserved(foregroundNotification))
        return;
    const auto waiting = std::exchange(m_waiting, {});
    storeWaiting();
    for (const QVariantMap &userInfo : waiting)
        m_notifications->postNotificationName(foregroundNotification, userInfo);
}

void PushRegistration::storeWaiting()
{
    QVariantList waiting;
    for (const QVariantMap &userInfo : std::as_const(m_waiting))
        waiting << userInfo;
    m_defaults->setObject(waiting.isEmpty() ? QVariant() : QVariant(waiting), waitingKey);
    m_defaults->synchronize();
}

void PushRegistration::didReceiveNotification(const QVariantMap &userInfo)
{
    isAppBackground = true;
    m_notifications->postNotificationName(u"backGeTuiPushLoadNewWeb"_s, userInfo);
}
