#pragma once

#include "model/DeploymentConfiguration.h"

class LoginModel;

namespace AssistTools {

//! The base address of modules without a host of their own: the chosen school's own server where
//! there is one with an address, else the regions host.
QString localBaseUrl(const LoginModel &loginModel, const DeploymentConfiguration::Hosts &hosts);

}
