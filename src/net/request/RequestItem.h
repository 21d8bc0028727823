#pragma once

#include "net/request/ResponseCallback.h"
#include "platform/http/HTTPTask.h"
#include "platform/transport/HTTPTypes.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <variant>

class RequestItemOwner;

//! One call to the platform, from the moment it is sent until its completion has been delivered.
//! Single use; destroyed earlier, it ends its transfer and stays silent.
class RequestItem : public QObject
{
    Q_OBJECT

public:
    enum Type { Get = 0, Post = 1 };
    //! No body that could be read; a parsed body of a GET; the bytes of a POST's answer, which
    //! nobody parses.
    using ResponseObject = std::variant<std::monostate, QJsonValue, QByteArray>;

    static std::unique_ptr<RequestItem> createItemWithtype(int type, const QString &organization,
        const QString &action, const QString &start, const HTTPParameters &params,
        RequestItemOwner *owner, ResponseCallback response);
    ~RequestItem() override;

    //! Sends the request; a type that is neither Get nor Post sends nothing and is never answered.
    void request();
    //! Ends the running transfer; the completion then says that the request failed.
    void cancel();

    const ResponseObject &responseObject() const { return m_responseObject; }
    const ResponseCallback &response() const { return m_response; }

private:
    RequestItem() = default;

    void didSucceedGet(const HTTPResponse &response);
    void didSucceedPost(const HTTPResponse &response);
    void didFail(const HTTPResponse &response, const HTTPError &error);

    int m_type = Get;
    QString m_action;
    QString m_start;
    HTTPParameters m_params;
    QString m_organization;
    RequestItemOwner *m_owner = nullptr;
    ResponseCallback m_response;
    ResponseObject m_responseObject;
    QPointer<HTTPTask> m_requestTask;
};
