#pragma once

#include <QObject>

#include <functional>
#include <optional>

class NotificationCenter;
class QJsonValue;
class RequestInterface;
class Shell;
class UrlOpener;
class UserSession;

//! What the update check works with; nothing is owned, all must outlive it.
struct UpdateEnvironment
{
    RequestInterface *requests;
    Shell *shell;
    UrlOpener *urlOpener;
    UserSession *session;
    NotificationCenter *notifications;
    QString build; //!< the client's own build number
    QString officialHost; //!< with the download page; ends with "/"
    //! Whether a launch advertisement covers the window.
    std::function<bool()> launchAdShowing;
};

//! Asks at start-up whether the platform knows a newer build, and offers it. Nothing about it is
//! stored: what is declined is offered again at the next start. Owned by the application.
class UpdateCheck : public QObject
{
    Q_OBJECT

public:
    enum class Force { No, Yes };
    enum Tag { ForcedTag = 101, OptionalTag = 102 };

    explicit UpdateCheck(const UpdateEnvironment &environment);

    //! One question to the platform; failures are silent.
    void checkAppUpdate();
    //! The dialog; while an advertisement covers the window it waits.
    void showUpdate(const QString &message, Force isForce);
    //! A forced update signs the user out as well. The page opens in the system's browser.
    void clickedButtonAtIndex(int tag, int buttonIndex);

private:
    struct Update
    {
        QString message;
        Force isForce;
    };

    void didAnswer(int status, const QJsonValue &data);
    void present(const Update &update);

    UpdateEnvironment m_environment;
    std::optional<Update> m_waiting;
};
