#pragma once

namespace httplib {
struct Request;
}

namespace sandbox {

enum class Ending { InOrder, Reset };

//! Ends the connection that the request came by, in both directions and at once.
void hangUp(const httplib::Request &request, Ending ending);

} // namespace sandbox
