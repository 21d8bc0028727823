#include "platform/transport/curl/TransportPlugin.h"

#include "platform/transport/curl/CurlLoop.h"

TransportPlugin::TransportPlugin()
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

std::unique_ptr<TransferLoop> TransportPlugin::make(const QByteArrayList &authorities) const
{
    return std::make_unique<CurlLoop>(authorities);
}
