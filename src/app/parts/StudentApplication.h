#pragma once

#include "app/delegate/AppDelegate.h"
#include "app/parts/InputPause.h"
#include "app/parts/LoadAhead.h"
#include "app/parts/Screens.h"
#include "app/parts/SystemDevice.h"
#include "app/parts/Window.h"
#include "launch/LaunchStage.h"
#include "session/Account.h"
#include "web/portal/Portal.h"

class RunningInstance;

//! The client: makes one of everything, each from what stands above it here.
class StudentApplication : public QObject
{
    Q_OBJECT

public:
    //! \a cameraFeed: a picture or video in place of a camera; null: the device's own.
    StudentApplication(const DeploymentConfiguration &configuration, const ProfilePaths &paths,
        const QString &cameraFeed = {});
    ~StudentApplication() override;

    //! Shows the window and launches.
    void start(const std::optional<QVariantMap> &launchNotification);

    QQuickWindow *window() const { return m_window.window(); }

    //! From now on takes what later starts of the program hand over.
    void listenTo(RunningInstance *instance);
    //! A URL that another program handed to this one.
    void receiveUrl(const QUrl &url);

private:
    void prepareHomeInPause();

    LoadAhead m_loadAhead;
    const QString m_title;
    SystemDevice m_systemDevice;
    const Device m_device;
    Account m_account;
    Window m_window;
    Portal m_portal;
    LaunchStage m_launch;
    Screens m_screens;
    AppDelegate m_delegate;
    InputPause m_inputPause;
};
