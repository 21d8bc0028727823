#include "session/LoginResult.h"

#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "net/RequestInterface.h"

namespace {

const QString redirectKey = QStringLiteral("redirect_url");

}

LoginResult::LoginResult(
    LoginModel *loginModel, UserDefaults *defaults, RequestInterface *requests)
    : m_loginModel(loginModel)
    , m_defaults(defaults)
    , m_requests(requests)
{
}

void LoginResult::storeAnswer(const QJsonObject &data)
{
    m_loginModel->setSiteCode(m_requests->getCurrentOrganization());
    m_loginModel->siteInfo
        = DictionaryMapper::model<SiteModel>(data.value(u"siteInfo").toObject());
    m_loginModel->user_type
        = int(DictionaryMapper::integer(data.value(u"user_type")).value_or(0));
    m_loginModel->userModel = DictionaryMapper::model<UserModel>(data.value(u"user").toObject());
    m_loginModel->ssoinfo = DictionaryMapper::model<SsoModel>(data.value(u"ssoinfo").toObject());
    // An answer without a token, or with none in it, keeps the one that works.
    const QString token = DictionaryMapper::text(data.value(u"login_token"));
    if (!token.isEmpty())
        m_loginModel->setLogin_token(token);
}

void LoginResult::handleLoginResult(const QJsonObject &data, Refresh refresh)
{
    storeAnswer(data);
    if (refresh == Refresh::Yes)
        m_loginModel->setIsLogin(true);
}

void LoginResult::handleLoginResult(const QJsonObject &data, const ChosenRegion &region)
{
    storeAnswer(data);
    m_defaults->setObject(DictionaryMapper::text(data.value(redirectKey)), redirectKey);
    m_defaults->synchronize();
    if (!region.school.isEmpty())
        m_loginModel->setSchool(region.school);
    if (!region.provinces.isEmpty())
        m_loginModel->setProvinces(region.provinces);
    if (!region.city.isEmpty())
        m_loginModel->setCity(region.city);
    m_loginModel->setIsLogin(true);
}
