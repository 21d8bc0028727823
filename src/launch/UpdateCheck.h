#pragma once

#include <QObject>

#include <functional>
#include <optional>

class Account;
class QJsonValue;
class Shell;
class UrlOpener;
struct DeploymentConfiguration;
struct Device;

//! Asks at start-up whether the platform knows a newer build, and offers it. Nothing about it is
//! stored: what is declined is offered again at the next start.
class UpdateCheck : public QObject
{
    Q_OBJECT

public:
    enum class Force { No, Yes };
    enum Tag { ForcedTag = 101, OptionalTag = 102 };

    //! \a launchAdShowing: whether a launch advertisement covers the window; none: there is never
    //! one.
    UpdateCheck(const Device &device, Account *account, Shell *shell,
        const DeploymentConfiguration &configuration, std::function<bool()> launchAdShowing);

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

    Account *m_account;
    Shell *m_shell;
    UrlOpener *m_urlOpener;
    QString m_build;
    QString m_officialHost; // ends with "/"
    std::function<bool()> m_launchAdShowing;
    std::optional<Update> m_waiting;
};
