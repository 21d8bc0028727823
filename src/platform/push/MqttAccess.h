#pragma once

#include <QString>

//! Where and as whom an MqttConnection is made.
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
