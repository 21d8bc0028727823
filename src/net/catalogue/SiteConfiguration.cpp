#include "net/catalogue/SiteConfiguration.h"

#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "model/SchoolModel.h"
#include "net/catalogue/RequestInterface.h"

#include <QJsonArray>

namespace {

void storeAddresses(const QJsonObject &data, LoginModel &loginModel)
{
    loginModel.setTerminalCDN(data[u"terminal_cdn"].toString());
    loginModel.setRbCDN(data[u"rb_cdn"].toString());
    loginModel.setBaseCDN(data[u"base_cdn"].toString());
    loginModel.setRegisterCDN(data[u"register_cdn"].toString());
    loginModel.setZzrbCDN(data[u"zzrb_cdn"].toString());
    loginModel.setQeCDN(data[u"qe_cdn"].toString());
}

QList<DataModel> rowsOf(const QJsonArray &list)
{
    QList<DataModel> rows;
    rows.reserve(list.size());
    for (const QJsonValue &element : list) {
        if (element.isObject())
            rows << DataModel::fromSchool(DictionaryMapper::model<SchoolModel>(element.toObject()));
    }
    return rows;
}

}

SiteConfiguration::SiteConfiguration(RequestInterface *requests, LoginModel *loginModel)
    : m_requests(requests)
    , m_loginModel(loginModel)
{
}

void SiteConfiguration::load(Loaded loaded) const
{
    m_requests->requestSchoolInfo([loginModel = m_loginModel, loaded = std::move(loaded)](
                                      int status, const QJsonValue &data, const auto &error) {
        if (status != ResponseStatus::success)
            return loaded(status, {}, error);
        if (!data.isObject())
            return loaded(ResponseStatus::failure, {},
                ResponseErrorInfo::createErrorInfoWithCode(0, ResponseErrorInfo::requestError()));
        storeAddresses(data.toObject(), *loginModel);
        loaded(status, rowsOf(data[u"list"].toArray()), std::nullopt);
    });
}
