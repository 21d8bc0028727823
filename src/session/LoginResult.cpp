#include "session/LoginResult.h"

#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "net/catalogue/RequestInterface.h"

namespace {

const QString redirectKey = QStringLiteral("redirect_url");

}

LoginResult::LoginResult(LoginModel *loginModel, UserDefaults *defaults, RequestInterface *requests)
    : m_loginModel(loginModel)
    , m_defaults(defaults)
    , m_requests(requests)
{
}

QString LoginResult::userOf(const QJsonObject &data) const
{
    const QString id = DictionaryMapper::text(data.value(u"user")[u"user_id"]);
    return id.isEmpty() ? QString() : m_requests->getCurrentOrganization() + u'/' + id;
}

void LoginResult::storeAnswer(const QJsonObject &data, RedirectUrl redirectUrl)
{
    m_loginModel->setSiteCode(m_requests->getCurrentOrganization());
    m_loginModel->siteInfo = DictionaryMapper::model<SiteModel>(data.value(u"siteInfo").toObject());
    m_loginModel->redirect_url = DictionaryMapper::text(data.value(redirectKey));
    if (redirectUrl == RedirectUrl::Stored) {
        m_defaults->setObject(m_loginModel->redirect_url, redirectKey);
        m_defaults->synchronize();
    }
    m_loginModel->user_type = int(DictionaryMapper::integer(data.value(u"user_type")).value_or(0));
    m_loginModel->userModel = DictionaryMapper::model<UserModel>(data.value(u"user").toObject());
    m_loginModel->ssoinfo = DictionaryMapper::model<SsoModel>(data.value(u"ssoinfo").toObject());
    // An answer without a token keeps the old one; an empty one is kept as none, for the old one is
    // somebody else's.
    const QString token = DictionaryMapper::text(data.value(u"login_token"));
    if (!token.isNull())
        m_loginModel->setLogin_token(token);
}

void LoginResult::handleLoginResult(const QJsonObject &data, Refresh refresh)
{
    storeAnswer(data, RedirectUrl::NotStored);
    if (refresh == Refresh::Yes)
        m_loginModel->setIsLogin(true);
}

void LoginResult::handleLoginResult(const QJsonObject &data, const ChosenRegion &region)
{
    storeAnswer(data, RedirectUrl::Stored);
    if (!region.school.isEmpty())
        m_loginModel->setSchool(region.school);
    if (!region.provinces.isEmpty())
        m_loginModel->setProvinces(region.provinces);
    if (!region.city.isEmpty())
        m_loginModel->setCity(region.city);
    m_loginModel->setIsLogin(true);
}
