#pragma once

#include "web/profiles/WebCookieStore.h"

#include <QString>
#include <QWebEngineScript>

#include <memory>

class HTTPCookieStorage;
class QQuickWebEngineProfile;

//! The engine's profile of one class of pages, shared by all views of that class for the life of
//! the process: user agent, scripts and cookies belong to it. Making one takes the main thread tens
//! of milliseconds.
class WebPageProfile
{
public:
    enum class Frames { Main, All };

    //! \a applicationName is appended to the engine's own user agent. \a folder is where pages' own
    //! storage goes. \a direction: whether what pages do to cookies reaches the shell's storage.
    WebPageProfile(const QString &name, const QString &folder, const QString &applicationName,
        HTTPCookieStorage *storage, WebCookieStore::Direction direction);
    ~WebPageProfile();

    //! Runs the script in every document of this profile from the next one on.
    void addUserScript(const QString &name, const QString &source,
        QWebEngineScript::InjectionPoint injectionPoint, Frames frames,
        QWebEngineScript::ScriptWorldId world = QWebEngineScript::MainWorld);
    //! Gives every document of this profile a bridge, where its view publishes one.
    void addBridge();

    QQuickWebEngineProfile *engineProfile() const { return m_profile.get(); }
    WebCookieStore *cookies() const { return m_cookies.get(); }

private:
    std::unique_ptr<QQuickWebEngineProfile> m_profile;
    std::unique_ptr<WebCookieStore> m_cookies;
};
