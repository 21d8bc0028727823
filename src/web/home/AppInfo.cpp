#include "web/home/AppInfo.h"

#include "model/LoginModel.h"
#include "model/StringFormat.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int type = 1;
const QString qeSegment = QStringLiteral("qe/");

}

QString AppInfo::text(const LoginModel &loginModel, const QString &deviceIdentifier)
{
    const QString siteId = loginModel.userModel ? loginModel.userModel->site_id : QString();
    return StringFormat::format(
        uR"({"im_type" : %@, "app_type" : %@, "dev_type" : %@, "regId": "%@", "site_id": "%@", )"
        uR"("client_code": "%@", "terminal_cdn": "%@", "rb_cdn": "%@", "base_cdn": "%@", )"
        uR"("register_cdn": "%@", "zzrb_cdn": "%@", "qe_cdn": "%@"})"_s,
        QVariant(type), QVariant(type), QVariant(type), loginModel.c_id(), siteId, deviceIdentifier,
        loginModel.terminalCDN(), loginModel.rbCDN(), loginModel.baseCDN(),
        loginModel.registerCDN(), loginModel.zzrbCDN(), loginModel.qeCDN());
}

QString AppInfo::requestUrl(const LoginModel &loginModel, const QString &portalHost)
{
    if (!loginModel.isLocal())
        return portalHost + loginModel.siteCode();
    const QStringList pieces = loginModel.localUrl().split(qeSegment);
    return pieces.size() < 2 ? QString() : pieces[0] + pieces[1];
}
