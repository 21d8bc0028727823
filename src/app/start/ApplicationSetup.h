#pragma once

#include <QString>

//! What a process that runs the client sets up around its QGuiApplication.
namespace ApplicationSetup {

inline constexpr const char *version = VANT_VERSION;

//! Switches the web engine's own sandbox off where it is set.
inline constexpr const char *withoutSandbox = "QTWEBENGINE_DISABLE_SANDBOX";

//! First of all: what the process makes from now on is for its user alone.
void keepFilesPrivate();
//! One line that says why the web engine would not start, null when it will.
QString engineProblem();
//! Before the application object: the web engine.
void beforeApplication();
//! After it, before any QML: names.
void afterApplication();

}
