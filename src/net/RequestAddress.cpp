#include "net/RequestAddress.h"

QString RequestAddress::of(const QString &action, const QString &start, const QString &organization,
    const Servers &servers)
{
    const auto &[hosts, base, isLocal, local, localQe] = servers;

    const QString endpoint = QStringLiteral("do?");
    const QString pathEndpoint = QStringLiteral("/do?");

    // User agreement and privacy policy lie on one host, whatever the module.
    if (start == u"agreement")
        return hosts.rb + endpoint;

    const struct
    {
        QStringView action;
        QString address;
        QString localAddress; //!< where the school runs its own server; null: the same
    } rules[] = {
        {u"rb/platform/site", hosts.rb + endpoint, {}},
        {u"gpl/platform/portal", hosts.rb + endpoint, {}},
        {u"qe/platform/regions", hosts.regions + endpoint, {}},
        {u"api/public_all", hosts.publicConfiguration + endpoint, {}},
        {u"base/platform/portal", hosts.base + endpoint, {}},
        {u"qe/h5/third", base + organization + pathEndpoint, localQe + pathEndpoint},
        {u"gpl/common/hv/bind", hosts.rb + organization + pathEndpoint, localQe + pathEndpoint},
        {u"rb/h5/login", hosts.rb + organization + u"/do"_qs, local + pathEndpoint},
        {u"gpl/portal", hosts.rb + organization + u"/do"_qs, local + pathEndpoint},
        {u"qe/h5/login", base + organization + pathEndpoint,
            QString(localQe + pathEndpoint).replace(u"rb"_qs, u"qe"_qs)},
    };
    for (const auto &rule : rules) {
        if (rule.action == action)
            return isLocal && !rule.localAddress.isNull() ? rule.localAddress : rule.address;
    }
    return base;
}
