#pragma once

//! What a process that runs the client sets up around its QGuiApplication.
namespace ApplicationSetup {

inline constexpr const char *version = VANT_VERSION;

//! Before the application object: private files, the web engine.
void beforeApplication();
//! After it, before any QML: names.
void afterApplication();

}
