#pragma once

#include "model/DeploymentConfiguration.h"
#include "net/request/RequestItem.h"
#include "net/request/RequestItemOwner.h"

#include <unordered_map>

class LoginModel;
class HTTPNetwork;
class UserDefaults;

//! Sends calls to the platform and reads the envelope of their answers. One for the process, made
//! by the application.
//!
//! It owns the requests in flight, any number at a time; nothing is retried or queued. Used on the
//! main thread only.
class BaseRequestManager : public RequestItemOwner
{
public:
    using ConnectItems = std::unordered_map<size_t, std::unique_ptr<RequestItem>>;

    //! None of the pointers is owned; all must outlive the manager.
    BaseRequestManager(HTTPNetwork *network, LoginModel *loginModel, UserDefaults *defaults,
        const DeploymentConfiguration::Hosts &hosts);
    ~BaseRequestManager() override;
    BaseRequestManager(const BaseRequestManager &) = delete;
    BaseRequestManager &operator=(const BaseRequestManager &) = delete;

    //! Calls operation \a start of module \a action. "action" and "start" in \a params are
    //! overwritten; parameters that are null stay away. \a type is a RequestItem::Type; of any
    //! other type nothing is sent, the response never comes, and the item stays in connectItems as
    //! long as the manager lives. The item lives until its response has been called.
    RequestItem *connectWithAction(const QString &action, const QString &start, int type,
        const HTTPParameters &params, ResponseCallback response);

    //! The path segment of the chosen site in some addresses.
    QString organization;

    const ConnectItems &connectItems() const { return m_connectItems; }

    HTTPNetwork *network() const override { return m_network; }
    UserDefaults *defaults() const override { return m_defaults; }
    QString addressOf(
        const QString &action, const QString &start, const QString &organization) const override;
    //! Delivers an item's completion and lets go of the item.
    void handelRequestDidFinish(RequestItem *item, const std::optional<HTTPError> &error) override;

private:
    HTTPNetwork *m_network;
    LoginModel *m_loginModel;
    UserDefaults *m_defaults;
    DeploymentConfiguration::Hosts m_hosts;
    ConnectItems m_connectItems;
};
