#include "net/catalogue/RequestInterface.h"

#include "model/DeviceIdentifier.h"
#include "net/request/BaseRequestManager.h"

#include <QSize>

namespace {

const QString loginModule = QStringLiteral("rb/h5/login");
const QString siteModule = QStringLiteral("rb/platform/site");
const QString portalModule = QStringLiteral("gpl/portal");
const QString portalSettingsModule = QStringLiteral("gpl/platform/portal");
const QString bindModule = QStringLiteral("gpl/common/hv/bind");
const QString appOs = QStringLiteral("IOS");
const QString loginOperation = QStringLiteral("login4H5");

constexpr int tokenLoginType = 3;
constexpr int userAgreement = 1;
constexpr int privacyPolicy = 2;
constexpr int pushDevice = 1;

}

RequestInterface::RequestInterface(BaseRequestManager *manager, DeviceIdentifier *studentIdentifier,
    DeviceIdentifier *patriarchIdentifier)
    : m_manager(manager)
    , m_studentIdentifier(studentIdentifier)
    , m_patriarchIdentifier(patriarchIdentifier)
{
}

RequestItem *RequestInterface::get(const QString &action, const QString &start,
    const HTTPParameters &params, ResponseCallback response)
{
    return m_manager->connectWithAction(
        action, start, RequestItem::Get, params, std::move(response));
}

void RequestInterface::setOrganization(const QString &organization)
{
    m_manager->organization = organization;
}

QString RequestInterface::getCurrentOrganization() const
{
    return m_manager->organization;
}

QString RequestInterface::loginAddress() const
{
    return m_manager->addressOf(portalModule, loginOperation, m_manager->organization);
}

void RequestInterface::studentTeacherLoginWithAccount(
    const QString &account, const QString &userPwd, ResponseCallback response)
{
    m_studentIdentifier->whenReady([=, this](const QString &uuid) {
        get(loginModule, u"login"_qs,
            {{u"user_code"_qs, account}, {u"user_pwd"_qs, userPwd}, {u"app_type"_qs, appOs},
                {u"client_code"_qs, uuid}},
            response);
    });
}

void RequestInterface::studentAndTeacherLoginWithAccount(
    const QString &account, const QString &userPwd, ResponseCallback response)
{
    get(loginModule, u"login"_qs, {{u"user_code"_qs, account}, {u"user_pwd"_qs, userPwd}},
        std::move(response));
}

void RequestInterface::patriarchalLoginWithAccount(
    const QString &account, const QString &userPwd, ResponseCallback response)
{
    m_patriarchIdentifier->whenReady([=, this](const QString &uuid) {
        get(u"qe/h5/login"_qs, u"login_tea"_qs,
            {{u"user_code"_qs, account}, {u"user_pwd"_qs, userPwd}, {u"app_type"_qs, appOs},
                {u"client_code"_qs, uuid}},
            response);
    });
}

RequestItem *RequestInterface::tokenLogin(const QString &login_token, ResponseCallback response)
{
    return get(portalModule, loginOperation,
        {{u"login_token"_qs, login_token}, {u"login_type"_qs, tokenLoginType}},
        std::move(response));
}

RequestItem *RequestInterface::loginForAppWeixinWithCode(
    const QString &code, int type, ResponseCallback response)
{
    return get(portalModule, u"login4AppWeixin"_qs, {{u"code"_qs, code}, {u"type"_qs, type}},
        std::move(response));
}

RequestItem *RequestInterface::accountBindWechatWithUserCode(const QString &userCode,
    const QString &userPwd, const QString &union_id, const QString &open_id, const QString &nick,
    const QString &timestamp, const QString &sign, const QString &bind_type,
    const QString &login_type, ResponseCallback response)
{
    return get(portalModule, loginOperation,
        {{u"user_code"_qs, userCode}, {u"user_pwd"_qs, userPwd}, {u"union_id"_qs, union_id},
            {u"open_id"_qs, open_id}, {u"nick"_qs, nick}, {u"timestamp"_qs, timestamp},
            {u"sign"_qs, sign}, {u"bind_type"_qs, bind_type}, {u"login_type"_qs, login_type}},
        std::move(response));
}

void RequestInterface::verifyAccountWithUserNo(
    const QString &userNo, const QString &cardNo, ResponseCallback response)
{
    get(loginModule, u"verifyAccount"_qs, {{u"user_no"_qs, userNo}, {u"card_no"_qs, cardNo}},
        std::move(response));
}

void RequestInterface::verifyPatriarchAccountWithUserName(
    const QString &userName, const QString &cardNo, ResponseCallback response)
{
    get(loginModule, u"verifyAccount_tea"_qs,
        {{u"user_name"_qs, userName}, {u"card_no"_qs, cardNo}}, std::move(response));
}

void RequestInterface::settingAccountWithUserID(const QString &userID, const QString &userCode,
    const QString &password, ResponseCallback response)
{
    get(loginModule, u"settingAccount"_qs,
        {{u"user_code"_qs, userCode}, {u"user_pwd"_qs, password}, {u"user_id"_qs, userID}},
        std::move(response));
}

void RequestInterface::settingPatriarchAccountWithUserID(const QString &userID,
    const QString &userCode, const QString &password, ResponseCallback response)
{
    get(loginModule, u"settingAccount_tea"_qs,
        {{u"user_code"_qs, userCode}, {u"user_pwd"_qs, password}, {u"user_id"_qs, userID}},
        std::move(response));
}

void RequestInterface::requsetSiteWithSearchkey(const QString &searchkey, ResponseCallback response)
{
    get(siteModule, u"siteSearch"_qs, {{u"searchkey"_qs, searchkey}}, std::move(response));
}

void RequestInterface::getSchoolDataWithResponse(ResponseCallback response)
{
    get(u"qe/platform/regions"_qs, u"tree"_qs, {}, std::move(response));
}

void RequestInterface::requestSchoolInfo(ResponseCallback response)
{
    get(siteModule, u"cndSite"_qs, {}, std::move(response));
}

void RequestInterface::requestSchoolLogo(const QString &site_id, ResponseCallback response)
{
    get(portalSettingsModule, u"getSetting4App"_qs, {{u"site_id"_qs, site_id}},
        std::move(response));
}

void RequestInterface::checkAppUpdateWithCurNo(
    const QString &curNo, const QString &app_name, ResponseCallback response)
{
    get(u"base/platform/portal"_qs, u"appUpdateInfo"_qs,
        {{u"cur_bulid_no"_qs, curNo}, {u"app_name"_qs, app_name}, {u"app_os"_qs, appOs}},
        std::move(response));
}

void RequestInterface::requestAd(const QSize &resolutionPixel, ResponseCallback response)
{
    get(portalSettingsModule, u"listAd4App"_qs,
        {{u"terminal"_qs, u"ios"_qs},
            {u"resolution_pixel"_qs,
                u"%1*%2"_qs.arg(resolutionPixel.width()).arg(resolutionPixel.height())}},
        std::move(response));
}

void RequestInterface::requestAgreementUser(ResponseCallback response)
{
    get(portalSettingsModule, u"agreement"_qs, {{u"type"_qs, userAgreement}}, std::move(response));
}

void RequestInterface::requestAgreementPrivacy(ResponseCallback response)
{
    get(portalSettingsModule, u"agreement"_qs, {{u"type"_qs, privacyPolicy}}, std::move(response));
}

void RequestInterface::bindUserInfoEntrance(const QString &entrance, const QString &site_id,
    const QString &reg_id, const QString &user_id, const QString &user_type, const QString &im_type,
    const QString &dev_type, const QString &app_type, ResponseCallback response)
{
    get(u"qe/h5/third"_qs, u"bindIm"_qs,
        {{u"entrance"_qs, entrance}, {u"site_id"_qs, site_id}, {u"reg_id"_qs, reg_id},
            {u"user_id"_qs, user_id}, {u"user_type"_qs, user_type}, {u"im_type"_qs, im_type},
            {u"dev_type"_qs, dev_type}, {u"app_type"_qs, app_type}},
        std::move(response));
}

RequestItem *RequestInterface::bindGeTuiWithC_id(
    const QString &c_id, const QString &user_id, ResponseCallback response)
{
    return get(bindModule, u"bindGeTui"_qs,
        {{u"c_id"_qs, c_id}, {u"user_id"_qs, user_id}, {u"dev_type"_qs, pushDevice}},
        std::move(response));
}

void RequestInterface::unbindGeTuiWithC_id(
    const QString &c_id, const QString &user_id, ResponseCallback response)
{
    get(bindModule, u"unBindGeTui"_qs, {{u"c_id"_qs, c_id}, {u"user_id"_qs, user_id}},
        std::move(response));
}
