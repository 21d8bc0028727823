#pragma once

#include <QString>

#include <memory>

class HTTPCookieStorage;
class WebPageProfile;

//! The profiles of the pages beside the home container, one for each class of pages. Make each
//! once; \a folder is where the pages' own storage goes.
namespace SecondaryPageProfiles {

std::unique_ptr<WebPageProfile> miniProgram(const QString &folder, HTTPCookieStorage *storage);
std::unique_ptr<WebPageProfile> landscape(const QString &folder, HTTPCookieStorage *storage);
std::unique_ptr<WebPageProfile> outLink(const QString &folder, HTTPCookieStorage *storage);

}
