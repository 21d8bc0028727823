#pragma once

#include "model/DataModel.h"
#include "net/request/ResponseErrorInfo.h"

#include <QList>

#include <functional>
#include <optional>

class LoginModel;
class RequestInterface;

//! Where this deployment's content lies, and which schools it has. Made by whoever shows the
//! schools.
class SiteConfiguration
{
public:
    //! The schools in the server's order; empty unless the status is 200.
    using Loaded = std::function<void(
        int status, const QList<DataModel> &rows, const std::optional<ResponseErrorInfo> &error)>;

    //! Nothing is owned; both must outlive every load.
    SiteConfiguration(RequestInterface *requests, LoginModel *loginModel);

    //! Asks the server, stores the six content addresses in the login record (a missing one as nil)
    //! and hands over the schools. An answer whose data is no object fails and leaves the stored
    //! addresses alone. \a loaded is called once, on the main thread, later.
    void load(Loaded loaded) const;

private:
    RequestInterface *m_requests;
    LoginModel *m_loginModel;
};
