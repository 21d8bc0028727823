#pragma once

#include "ui/shell/Shell.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <memory>

class LaunchAd;

//! The client's window, and the shell that it shows. One for the process.
class Window
{
public:
    explicit Window(MainQueue &mainQueue);
    ~Window();

    Shell *shell() { return &m_shell; }

    //! Makes the window, with a place for the launch advertisement over all else.
    QQuickWindow *make(const QString &title, LaunchAd *launchAd);
    //! Null until it is made.
    QQuickWindow *window() const { return m_window; }
    void activate();
    //! Takes the window and all screens away, before what they show goes.
    void close();

    //! Of the screen, portrait.
    static QSize screenPixels();
    //! What the window has, or will have: a phone's takes the whole screen as soon as it is shown.
    static QSize windowPixels();
    //! Asks the window system to show the window this way; null, or why it does not.
    QString turn(Qt::ScreenOrientation orientation);

private:
    Shell m_shell;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr; // the engine's
};
