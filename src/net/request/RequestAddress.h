#pragma once

#include "model/DeploymentConfiguration.h"

//! Which address a call goes to.
namespace RequestAddress {

//! The servers to choose from: the deployment's, and the one that the chosen school may run itself.
struct Servers
{
    DeploymentConfiguration::Hosts hosts;
    QString baseUrl; //!< for modules without a host of their own: AssistTools::localBaseUrl
    bool isLocal = false; //!< whether the school runs a server of its own
    QString localUrl;
    QString localUrlQe; //!< that server's qe module
};

//! The address of operation \a start of module \a action, the query still missing. A null
//! organization or local address counts as empty.
QString of(const QString &action, const QString &start, const QString &organization,
    const Servers &servers);

}
