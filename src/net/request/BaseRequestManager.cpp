#include "net/request/BaseRequestManager.h"

#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "model/StringFormat.h"
#include "net/request/AssistTools.h"
#include "net/request/RequestAddress.h"

namespace {

struct Outcome
{
    int status = ResponseStatus::failure;
    QJsonValue data = QJsonValue::Undefined;
    std::optional<ResponseErrorInfo> error;
};

Outcome outcomeOf(
    const RequestItem::ResponseObject &responseObject, const std::optional<HTTPError> &error)
{
    if (error || std::holds_alternative<std::monostate>(responseObject))
        return {.error = ResponseErrorInfo::createErrorInfoWithCode(
                    error ? error->code : 0, ResponseErrorInfo::requestError())};

    const auto *parsed = std::get_if<QJsonValue>(&responseObject);
    if (!parsed || !parsed->isObject())
        return {};

    const QJsonObject body = parsed->toObject();
    const qint64 code = DictionaryMapper::integer(body[u"code"]).value_or(0);
    if (code == ResponseStatus::success || code == ResponseStatus::secondSuccess)
        return {int(code), body[u"data"], {}};
    return {.error = ResponseErrorInfo::createErrorInfoWithCode(
                code, StringFormat::format(u"%@"_qs, body[u"msg"]))};
}

}

BaseRequestManager::BaseRequestManager(HTTPNetwork *network, LoginModel *loginModel,
    UserDefaults *defaults, const DeploymentConfiguration::Hosts &hosts)
    : m_network(network)
    , m_loginModel(loginModel)
    , m_defaults(defaults)
    , m_hosts(hosts)
{
}

BaseRequestManager::~BaseRequestManager() = default;

RequestItem *BaseRequestManager::connectWithAction(const QString &action, const QString &start,
    int type, const HTTPParameters &params, ResponseCallback response)
{
    auto item = RequestItem::createItemWithtype(
        type, organization, action, start, params, this, std::move(response));
    RequestItem *const sent = item.get();
    m_connectItems.emplace(std::hash<RequestItem *>()(sent), std::move(item));
    sent->request();
    return sent;
}

void BaseRequestManager::handelRequestDidFinish(
    RequestItem *item, const std::optional<HTTPError> &error)
{
    const Outcome outcome = outcomeOf(item->responseObject(), error);
    if (item->response())
        item->response()(outcome.status, outcome.data, outcome.error);
    m_connectItems.erase(std::hash<RequestItem *>()(item));
}

QString BaseRequestManager::addressOf(
    const QString &action, const QString &start, const QString &organization) const
{
    return RequestAddress::of(action, start, organization,
        {m_hosts, AssistTools::localBaseUrl(*m_loginModel, m_hosts), m_loginModel->isLocal(),
            m_loginModel->localUrl(), m_loginModel->localUrlQe()});
}
