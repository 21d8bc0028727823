#pragma once

#include "platform/http/HTTPNetwork.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/KeyChainStore.h"
#include "platform/storage/UserDefaults.h"

#include <QTemporaryDir>

//! Where a client keeps its state, and its network, in a temporary folder of its own.
class TestProfile
{
public:
    TestProfile();

    //! Opens the settings anew, as a restart finds them: their secrets are awaited.
    void reopenDefaults();

    QTemporaryDir folder;
    KeyChainStore keychain;
    UserDefaults defaults;
    const std::unique_ptr<HTTPCookieStorage> cookies;
    HTTPCookieStorage *const cookieStorage {cookies.get()};
    HTTPNetwork network {cookieStorage, folder.filePath(QStringLiteral("pictures"))};
};
