#pragma once

#include <QString>

class LoginModel;

//! What the portal's pages ask about this installation.
namespace AppInfo {

//! The text that "getAppInfo" answers with. Formatted, not escaped, with "(null)" for what is
//! missing: the pages take it apart themselves.
QString text(const LoginModel &loginModel, const QString &deviceIdentifier);

//! The portal's base address of the chosen site; null when the site's own address has no "qe/"
//! segment.
QString requestUrl(const LoginModel &loginModel, const QString &portalHost);

}
