#include "web/questions/PageNotifications.h"

#include "platform/push/DesktopNotifications.h"
#include "web/host/PageOrigin.h"
#include "web/permissions/PagePermissions.h"

#include <QQuickWebEngineProfile>
#include <QWebEngineNotification>

using namespace Qt::StringLiterals;

namespace {

const QString numberKey = QStringLiteral("page");

QVariantMap marked(int number)
{
    return {{numberKey, number}};
}

}

PageNotifications::PageNotifications(
    DesktopNotifications *desktop, const PagePermissions *permissions)
    : m_desktop(desktop)
    , m_permissions(permissions)
{
    connect(desktop, &DesktopNotifications::activated, this, [this](const QVariantMap &mark) {
        const int number = mark.value(numberKey).toInt();
        if (!m_shown.contains(number))
            return;
        Q_EMIT activated();
        m_shown.value(number)->click();
        drop(number);
    });
    const auto gone = [this](const QVariantMap &mark) { drop(mark.value(numberKey).toInt()); };
    connect(desktop, &DesktopNotifications::closed, this, gone);
    connect(desktop, &DesktopNotifications::unavailable, this, gone);
}

PageNotifications::~PageNotifications()
{
    qDeleteAll(m_shown);
}

void PageNotifications::listenTo(QQuickWebEngineProfile *profile)
{
    connect(
        profile, &QQuickWebEngineProfile::presentNotification, this, &PageNotifications::present);
}

void PageNotifications::present(QWebEngineNotification *notification)
{
    using enum PagePermissions::Matter;
    // The engine knows of a grant for longer than the user does.
    if (!m_permissions->answer(notification->origin(), Notifications).value_or(false)) {
        notification->deleteLater();
        return;
    }
    for (const int number : m_shown.keys()) {
        if (m_shown.value(number)->matches(notification))
            replace(number);
    }
    const int number = ++m_lastNumber;
    m_shown.insert(number, notification);
    connect(
        notification, &QWebEngineNotification::closed, this, [this, number] { withdraw(number); });
    notification->show();
    QString body = PageOrigin::name(notification->origin());
    if (!notification->message().isEmpty())
        body = notification->message() + u'\n' + body;
    m_desktop->post({.title = notification->title(), .body = body}, marked(number));
}

void PageNotifications::withdrawAll()
{
    for (const int number : m_shown.keys())
        withdraw(number);
}

// Closing it would close the one that takes its place: to the engine they are the same.
void PageNotifications::replace(int number)
{
    QWebEngineNotification *notification = m_shown.take(number);
    notification->disconnect(this);
    notification->deleteLater();
    m_desktop->close(marked(number));
}

void PageNotifications::withdraw(int number)
{
    m_desktop->close(marked(number));
    drop(number);
}

void PageNotifications::drop(int number)
{
    QWebEngineNotification *notification = m_shown.take(number);
    if (!notification)
        return;
    notification->disconnect(this);
    notification->close();
    notification->deleteLater();
}
