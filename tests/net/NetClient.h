#pragma once

#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "model/SecretSettings.h"
#include "model/StringFormat.h"
#include "net/catalogue/RequestInterface.h"
#include "net/request/BaseRequestManager.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "support/Patience.h"

#include <QLoggingCategory>
#include <QNetworkAccessManager>

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
class NetClient
{
public:
    using Call = std::function<void(ResponseCallback)>;

    explicit NetClient(const DeploymentConfiguration::Hosts &hosts)
        : manager(&network, &loginModel, &defaults, hosts)
    {
        network.setCookieJar(cookies);
        // The items of tests have no place in the keyring of whoever runs them.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        QLoggingCategory::setFilterRules(u"vant.platform.info=false"_qs);
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

    //! Opens the settings anew, in their place, as a restart finds them: their secrets are awaited.
    void reopenDefaults()
    {
        std::destroy_at(&defaults);
        std::construct_at(&defaults, settingsFile, &keychain, secretSettings);
    }

    QTemporaryDir folder;
    const QString settingsFile = folder.filePath(u"settings.ini"_qs);
    KeyChainStore keychain {u"net-test"_qs, folder.filePath(u"keychain.ini"_qs)};
    UserDefaults defaults {settingsFile, &keychain, secretSettings};
    LoginModel loginModel {&defaults};
    QNetworkAccessManager network;
    //! The network's.
    HTTPCookieStorage *cookies = new HTTPCookieStorage(folder.filePath(u"cookies.json"_qs));
    DeviceIdentifier student {&keychain, u"student"_qs};
    DeviceIdentifier patriarch {&keychain, u"patriarch"_qs};
    BaseRequestManager manager;
    RequestInterface requests {&manager, &student, &patriarch};
};
