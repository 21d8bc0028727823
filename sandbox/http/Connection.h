#pragma once

namespace httplib {
struct Request;
}

namespace sandbox {

//! Ends the connection that the request came by, in both directions and at once.
void hangUp(const httplib::Request &request);

} // namespace sandbox
