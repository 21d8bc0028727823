#pragma once

#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "model/StringFormat.h"
#include "net/catalogue/RequestInterface.h"
#include "net/request/BaseRequestManager.h"
#include "support/Patience.h"
#include "support/TestProfile.h"

//! What a call ended with.
struct Answer
{
    int status = 0;
    QJsonValue data = QJsonValue::Undefined;
    std::optional<ResponseErrorInfo> error;

    bool operator==(const Answer &) const = default;
};

//! For the messages of failed comparisons.
inline char *toString(const Answer &answer)
{
    const auto error = answer.error.value_or(ResponseErrorInfo());
    return QTest::toString(u"status %1, data %2, error %3 \"%4\""_qs.arg(answer.status)
                               .arg(StringFormat::description(answer.data).left(200))
                               .arg(error.code)
                               .arg(error.errorDescription));
}

//! The request layer with everything below it, in a profile of its own.
class NetClient : public TestProfile
{
public:
    using Call = std::function<void(ResponseCallback)>;

    explicit NetClient(const DeploymentConfiguration::Hosts &hosts)
        : manager(&network, &loginModel, &defaults, hosts)
    {
    }

    //! Starts a call and waits for its answer.
    static Answer await(const Call &call)
    {
        return answerOf<Answer>([&](const auto &then) {
            call([then](int status, const auto &data, const auto &error) {
                then({status, data, error});
            });
        });
    }
    //! The same for a call that no catalogue row stands for.
    Answer connect(const QString &action, const QString &start, int type = RequestItem::Get,
        const HTTPParameters &params = {})
    {
        return await([&](ResponseCallback response) {
            manager.connectWithAction(action, start, type, params, std::move(response));
        });
    }

    //! Sets the chosen school's own server; null strings take an address away.
    void setLocal(const QString &url, const QString &urlQe)
    {
        loginModel.setIsLocal(true);
        loginModel.setLocalUrl(url);
        loginModel.setLocalUrlQe(urlQe);
    }

    LoginModel loginModel {&defaults};
    DeviceIdentifier student {&keychain, u"student"_qs};
    DeviceIdentifier patriarch {&keychain, u"patriarch"_qs};
    BaseRequestManager manager;
    RequestInterface requests {&manager, &student, &patriarch};
};
