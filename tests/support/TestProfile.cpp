#include "support/TestProfile.h"

#include "model/SecretSettings.h"

#include <QLoggingCategory>

TestProfile::TestProfile()
    : keychain(u"test"_qs, folder.filePath(u"keychain.ini"_qs))
    , defaults(folder.filePath(u"settings.ini"_qs), &keychain, secretSettings)
    , cookies(std::make_unique<HTTPCookieStorage>(folder.filePath(u"cookies.json"_qs)))
{
    // The items of tests have no place in the keyring of whoever runs them.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    QLoggingCategory::setFilterRules(u"vant.platform.info=false"_qs);
}

void TestProfile::reopenDefaults()
{
    // In its place, for all that work with it.
    std::destroy_at(&defaults);
    std::construct_at(&defaults, folder.filePath(u"settings.ini"_qs), &keychain, secretSettings);
}
