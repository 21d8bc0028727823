#include "net/request/RequestAddress.h"

#include <QStringBuilder>

QString RequestAddress::of(const QString &action, const QString &start, const QString &organization,
    const Servers &servers)
{
    const auto &[hosts, base, isLocal, local, localQe] = servers;

    const QStringView endpoint = u"do?";
    const QStringView pathEndpoint = u"/do?";

    // User agreement and privacy policy lie on one host, whatever the module.
    if (start == u"agreement")
        return hosts.rb % endpoint;

    const QString localQeLogin = isLocal ? QString(localQe).replace(u"rb"_qs, u"qe"_qs) : QString();
    const struct
    {
        QStringView action;
        QStringView host;
        QStringView organization;
        QStringView endpoint;
        const QString *local = nullptr; //!< where the school runs its own server; null: the same
    } rules[] = {
        {u"rb/platform/site", hosts.rb, {}, endpoint},
        {u"gpl/platform/portal", hosts.rb, {}, endpoint},
        {u"qe/platform/regions", hosts.regions, {}, endpoint},
        {u"api/public_all", hosts.publicConfiguration, {}, endpoint},
        {u"base/platform/portal", hosts.base, {}, endpoint},
        {u"qe/h5/third", base, organization, pathEndpoint, &localQe},
        {u"gpl/common/hv/bind", hosts.rb, organization, pathEndpoint, &localQe},
        {u"rb/h5/login", hosts.rb, organization, u"/do", &local},
        {u"gpl/portal", hosts.rb, organization, u"/do", &local},
        {u"qe/h5/login", base, organization, pathEndpoint, &localQeLogin},
    };
    for (const auto &rule : rules) {
        if (rule.action != action)
            continue;
        return isLocal && rule.local ? QString(*rule.local % pathEndpoint)
                                     : QString(rule.host % rule.organization % rule.endpoint);
    }
    return base;
}
