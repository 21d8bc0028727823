#include "web/profiles/SecondaryPageProfiles.h"

#include "model/StringFormat.h"
#include "web/profiles/HomePageProfile.h"
#include "web/profiles/PageScripts.h"
#include "web/profiles/WebPageProfile.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace {

QString systemVersion()
{
    const QString product = QSysInfo::productVersion();
    // Systems that are always renewed have no version of their own.
    const QString version
        = product == u"unknown" ? QSysInfo::kernelVersion().section(u'-', 0, 0) : product;
    return QString(version).replace(u'.', u'_');
}

// After the engine's own, so that it names two browsers: deliberate.
QString miniProgramApplicationName()
{
    return StringFormat::format(u"Mozilla/5.0 (iPhone; CPU iPhone OS %@ like Mac OS X) "
                                "AppleWebKit/604.4.7 (KHTML, like Gecko) Mobile/15C153 %@"_s,
        systemVersion(), pageApplicationName);
}

std::unique_ptr<WebPageProfile> make(const QString &name, const QString &folder,
    const QString &applicationName, HTTPCookieStorage *storage, WebPageProfile::Frames frames)
{
    // These pages may be anybody's: their cookies are not the session's.
    auto profile = std::make_unique<WebPageProfile>(
        name, folder, applicationName, storage, WebCookieStore::Direction::IntoEngine);
    profile->addUserScript(u"currentCookies"_s, PageScripts::postCurrentCookies(),
        QWebEngineScript::DocumentReady, frames);
    return profile;
}

}

std::unique_ptr<WebPageProfile> SecondaryPageProfiles::miniProgram(
    const QString &folder, HTTPCookieStorage *storage)
{
    auto profile = make(u"miniprogram"_s, folder, miniProgramApplicationName(), storage,
        WebPageProfile::Frames::All);
    profile->addBridge();
    return profile;
}

std::unique_ptr<WebPageProfile> SecondaryPageProfiles::landscape(
    const QString &folder, HTTPCookieStorage *storage)
{
    auto profile
        = make(u"landscape"_s, folder, pageApplicationName, storage, WebPageProfile::Frames::Main);
    profile->addBridge();
    return profile;
}

std::unique_ptr<WebPageProfile> SecondaryPageProfiles::outLink(
    const QString &folder, HTTPCookieStorage *storage)
{
    return make(u"outlink"_s, folder, pageApplicationName, storage, WebPageProfile::Frames::Main);
}
