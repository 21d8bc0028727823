#pragma once

#include <QString>

//! Where a broker is, and as whom one connects to it.
struct MqttAccess
{
    QString host;
    int port = 0;
    bool encrypted = false;
    QString extraCaFile; //!< authorities besides the system's; may be empty
    QString clientId;
    QString userName;
    QString password;
    QString topic; //!< what is subscribed to, QoS 1
};
