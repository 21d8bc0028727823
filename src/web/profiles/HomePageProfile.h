#pragma once

#include <QString>

#include <memory>

class HTTPCookieStorage;
class WebPageProfile;

//! The token by which the platform's servers recognise this program in a user agent.
inline const QString pageApplicationName = QStringLiteral("VANT-IOS iphone");

//! The profile of the home container's pages, with all that runs in them. \a folder is where pages'
//! own storage goes.
std::unique_ptr<WebPageProfile> makeHomePageProfile(
    const QString &folder, HTTPCookieStorage *storage);
