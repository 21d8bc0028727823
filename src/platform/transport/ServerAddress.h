#pragma once

class QUrl;

//! What the address of a server says of the way to it.
namespace ServerAddress {

//! Whether the server is on this device.
bool isLoopback(const QUrl &address);
//! Whether whoever is on the way can read what is sent: neither encrypted nor on this device.
bool isOpenToOthers(const QUrl &address);

}
