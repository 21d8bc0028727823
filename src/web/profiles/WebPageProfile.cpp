#include "web/profiles/WebPageProfile.h"

#include "web/profiles/PageFonts.h"
#include "web/profiles/PageScripts.h"

#include <QQuickWebEngineProfile>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

const QString languages = QStringLiteral("zh-CN,zh;q=0.9,en;q=0.8");

std::unique_ptr<QQuickWebEngineProfile> makeEngineProfile()
{
    PageFonts::choose();
    return std::make_unique<QQuickWebEngineProfile>();
}

}

WebPageProfile::WebPageProfile(const QString &name, const QString &folder,
    const QString &applicationName, HTTPCookieStorage *storage, WebCookieStore::Direction direction)
    : m_profile(makeEngineProfile())
    , m_cookies(std::make_unique<WebCookieStore>(storage, m_profile->cookieStore(), direction))
{
    // The folders first: each further setting opens those that stand, the usual ones of the user
    // otherwise.
    m_profile->setPersistentStoragePath(folder + u"/storage"_s);
    m_profile->setCachePath(folder + u"/cache"_s);
    m_profile->setStorageName(name);
    m_profile->setOffTheRecord(false);
    // The shell's storage owns the session: the engine writes its own file seconds late, and a kill
    // would lose it.
    m_profile->setPersistentCookiesPolicy(QQuickWebEngineProfile::NoPersistentCookies);
    m_profile->setHttpAcceptLanguage(languages);
    m_profile->setHttpUserAgent(m_profile->httpUserAgent() + u' ' + applicationName);
}

WebPageProfile::~WebPageProfile() = default;

void WebPageProfile::addUserScript(const QString &name, const QString &source,
    QWebEngineScript::InjectionPoint injectionPoint, Frames frames,
    QWebEngineScript::ScriptWorldId world)
{
    QWebEngineScript script;
    script.setName(name);
    script.setSourceCode(source);
    script.setInjectionPoint(injectionPoint);
    script.setWorldId(world);
    script.setRunsOnSubFrames(frames == Frames::All);
    // The collection has no public header of its own.
    auto *scripts = m_profile->property("userScripts").value<QObject *>();
    QMetaObject::invokeMethod(scripts, "insert", Q_ARG(QWebEngineScript, script));
}

void WebPageProfile::addBridge()
{
    // In this order: the second hands the way to the shell to the first.
    addUserScript(
        u"bridge"_s, PageScripts::bridge(), QWebEngineScript::DocumentCreation, Frames::Main);
    addUserScript(u"transport"_s, PageScripts::transport(), QWebEngineScript::DocumentCreation,
        Frames::Main, QWebEngineScript::ApplicationWorld);
}
