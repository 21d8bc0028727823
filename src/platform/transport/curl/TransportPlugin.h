#pragma once

#include "platform/transport/TransferLoop.h"

//! Transfers by libcurl.
class TransportPlugin : public QObject, public TransferLoops
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "cn.vant.student.TransferLoops")
    Q_INTERFACES(TransferLoops)

public:
    TransportPlugin();

    std::unique_ptr<TransferLoop> make(const QByteArrayList &authorities) const override;
};
