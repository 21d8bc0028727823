#pragma once

#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "net/catalogue/RequestInterface.h"
#include "net/request/BaseRequestManager.h"
#include "support/TestProfile.h"

//! What a call ended with.
struct Answer
{
    int status = 0; //!< 0: no answer came
    QJsonValue data = QJsonValue::Undefined;
    std::optional<ResponseErrorInfo> error;

    bool operator==(const Answer &) const = default;
};

//! For the messages of failed comparisons.
char *toString(const Answer &answer);

//! The request layer with everything below it, in a profile of its own.
class NetClient : public TestProfile
{
public:
    using Call = std::function<void(ResponseCallback)>;

    explicit NetClient(const DeploymentConfiguration::Hosts &hosts);

    //! Starts a call and waits for its answer.
    static Answer await(const Call &call);
    //! The same for a call that no catalogue row stands for.
    Answer connect(const QString &action, const QString &start, int type = RequestItem::Get,
        const HTTPParameters &params = {});

    //! Sets the chosen school's own server; null strings take an address away.
    void setLocal(const QString &url, const QString &urlQe);

    LoginModel loginModel;
    DeviceIdentifier student;
    DeviceIdentifier patriarch;
    BaseRequestManager manager;
    RequestInterface requests;
};
