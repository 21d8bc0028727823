#pragma once

#include "net/request/ResponseCallback.h"
#include "platform/transport/HTTPTypes.h"

class BaseRequestManager;
class DeviceIdentifier;
class QSize;
class RequestItem;

//! The one place that knows the platform's operations. One for the process, made by the
//! application.
//!
//! Every call is a GET, is neither retried nor shown, and ends with its response as
//! ResponseCallback says. A null string is a parameter that stays away. What is made for a user can
//! be cancelled by the item that is returned, which lives until its response has been called.
class RequestInterface
{
public:
    //! The identifiers of the device for this edition and for the parents' one. Nothing is owned.
    RequestInterface(BaseRequestManager *manager, DeviceIdentifier *studentIdentifier,
        DeviceIdentifier *patriarchIdentifier);

    //! The site whose path segment the addresses carry; set whenever a site has been chosen or
    //! restored.
    void setOrganization(const QString &organization);
    QString getCurrentOrganization() const;
    //! Where account and password go, as things stand.
    QString loginAddress() const;

    // Signing in. "data" of a login: siteInfo, user, user_type, ssoinfo, login_token.
    void studentTeacherLoginWithAccount(
        const QString &account, const QString &userPwd, ResponseCallback response);
    void studentAndTeacherLoginWithAccount(
        const QString &account, const QString &userPwd, ResponseCallback response);
    void patriarchalLoginWithAccount(
        const QString &account, const QString &userPwd, ResponseCallback response);
    RequestItem *tokenLogin(const QString &login_token, ResponseCallback response);
    //! \a type is 1 or 2, as the WeChat login chooses.
    RequestItem *loginForAppWeixinWithCode(
        const QString &code, int type, ResponseCallback response);
    //! Signs an account in and binds it to a WeChat identity. Everything from union_id to sign is
    //! passed on as the platform gave it.
    RequestItem *accountBindWechatWithUserCode(const QString &userCode, const QString &userPwd,
        const QString &union_id, const QString &open_id, const QString &nick,
        const QString &timestamp, const QString &sign, const QString &bind_type,
        const QString &login_type, ResponseCallback response);

    // Enabling an account.
    void verifyAccountWithUserNo(
        const QString &userNo, const QString &cardNo, ResponseCallback response);
    void verifyPatriarchAccountWithUserName(
        const QString &userName, const QString &cardNo, ResponseCallback response);
    void settingAccountWithUserID(const QString &userID, const QString &userCode,
        const QString &password, ResponseCallback response);
    void settingPatriarchAccountWithUserID(const QString &userID, const QString &userCode,
        const QString &password, ResponseCallback response);

    // Sites.
    //! The sites that match; that an empty list means "no such school" is for the caller to say.
    void requsetSiteWithSearchkey(const QString &searchkey, ResponseCallback response);
    void getSchoolDataWithResponse(ResponseCallback response);
    void requestSchoolInfo(ResponseCallback response);
    void requestSchoolLogo(const QString &site_id, ResponseCallback response);

    // Launch and notices.
    void checkAppUpdateWithCurNo(
        const QString &curNo, const QString &app_name, ResponseCallback response);
    //! \a resolutionPixel is the screen size that the ad is wanted for, in pixels.
    void requestAd(const QSize &resolutionPixel, ResponseCallback response);
    void requestAgreementUser(ResponseCallback response);
    void requestAgreementPrivacy(ResponseCallback response);

    // Push.
    void bindUserInfoEntrance(const QString &entrance, const QString &site_id,
        const QString &reg_id, const QString &user_id, const QString &user_type,
        const QString &im_type, const QString &dev_type, const QString &app_type,
        ResponseCallback response);
    RequestItem *bindGeTuiWithC_id(
        const QString &c_id, const QString &user_id, ResponseCallback response);
    void unbindGeTuiWithC_id(
        const QString &c_id, const QString &user_id, ResponseCallback response);

private:
    RequestItem *get(const QString &action, const QString &start, const HTTPParameters &params,
        ResponseCallback response);

    BaseRequestManager *m_manager;
    DeviceIdentifier *m_studentIdentifier;
    DeviceIdentifier *m_patriarchIdentifier;
};
