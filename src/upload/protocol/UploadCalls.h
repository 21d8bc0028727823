#pragma once

#include "platform/transport/HTTPTypes.h"

#include <QJsonObject>
#include <QObject>
#include <QPointer>

#include <optional>

class HTTPTask;
class HTTPNetwork;

//! The HTTP of one upload: calls of the file service and parts for the object storage. Owned by
//! OMUploadFileManager. Each call is answered once, on the main thread, later; none after the end
//! of this object, which cancels them.
class UploadCalls : public QObject
{
    Q_OBJECT

public:
    //! The service's answer; nothing when the call failed or what came back is no JSON object.
    using Answered = std::function<void(const std::optional<QJsonObject> &answer)>;
    using Stored = std::function<void(bool success)>;
    using Headers = QList<std::pair<QByteArray, QByteArray>>;

    explicit UploadCalls(HTTPNetwork *network);
    ~UploadCalls() override;

    void post(const QString &address, const HTTPParameters &parameters, Answered answered);
    //! Headers without a value, or with one of several lines, are left out.
    void put(const QString &address, const Headers &headers, const QByteArray &data, Stored stored);

private:
    void track(HTTPTask *task);

    HTTPNetwork *m_network;
    QList<QPointer<HTTPTask>> m_tasks;
};
