#include "web/profiles/HomePageProfile.h"

#include "web/profiles/PageScripts.h"
#include "web/profiles/WebPageProfile.h"

using namespace Qt::StringLiterals;

std::unique_ptr<WebPageProfile> makeHomePageProfile(
    const QString &folder, HTTPCookieStorage *storage)
{
    auto profile = std::make_unique<WebPageProfile>(
        u"home"_s, folder, pageApplicationName, storage, WebCookieStore::Direction::Both);
    profile->addBridge();
    profile->addUserScript(u"currentCookies"_s, PageScripts::postCurrentCookies(),
        QWebEngineScript::DocumentReady, WebPageProfile::Frames::All);
    profile->addUserScript(u"fixDocument"_s, PageScripts::fixDocument(),
        QWebEngineScript::DocumentReady, WebPageProfile::Frames::Main);
    return profile;
}
