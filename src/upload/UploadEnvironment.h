#pragma once

#include <QString>

#include <functional>

class NetworkReachabilityManager;
class PhotoLibrary;
class QNetworkAccessManager;
class Shell;
class UserSession;

//! What the upload from pages works with; nothing is owned, all must outlive it.
struct UploadEnvironment
{
    using LoggedIn = std::function<void()>;

    QNetworkAccessManager *network;
    const NetworkReachabilityManager *reachability;
    PhotoLibrary *photoLibrary;
    Shell *shell;
    UserSession *session;
    //! Renews the login without a screen; calls back only when that has worked.
    std::function<void(LoggedIn success)> backGroundlogin;
    QString albumFolder; //!< takes what the camera makes
    QString libraryPath; //!< the program's data, below which files lie while they are sent
    QString exportFolder; //!< keeps exported clips
};
