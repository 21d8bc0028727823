#pragma once

//! Sends what is written at once. The toolkit leaves its connections to collect small writes until
//! the peer has acknowledged the last one, which peers put off: some 40 ms for every upload of a
//! part.
namespace TcpNoDelay {

//! For every TCP connection that this process has; where the system does not list them, none.
//! Cheap, but meant for new connections only.
void apply();

}
