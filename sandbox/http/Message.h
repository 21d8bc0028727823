#pragma once

#include "http/Addresses.h"

#include <chrono>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace sandbox {

using Headers = std::vector<std::pair<std::string, std::string>>;

//! One request as it came over the wire.
struct Request
{
    Host host = Host::Rb;
    std::string peer; //!< the other end of the connection, "127.0.0.1:54321"
    std::string method;
    std::string path;
    std::string query; //!< as received: undecoded, in wire order
    Headers headers;
    std::string body;
    std::multimap<std::string, std::string> params; //!< decoded, of the query and of a posted form

    bool has(const std::string &name) const { return params.contains(name); }
    //! The first parameter of that name, empty when there is none.
    std::string param(const std::string &name) const;
    //! The first header of that name, whatever its case, empty when there is none.
    std::string header(std::string_view name) const;
    std::string cookie(std::string_view name) const;
    bool isForm() const;
};

//! What goes back. A plain value, so that faults can be worked into any reply.
struct Reply
{
    int status = 200;
    std::string contentType = "text/plain;charset=UTF-8";
    std::string body;
    std::string file; //!< path of a file that is sent, or ranges of it, in place of the body
    Headers headers;
    std::chrono::milliseconds delay {0};
    bool cut = false; //!< promise the whole body and close the connection after half of it
    bool lost = false; //!< close the connection without an answer
    bool reset = false; //!< of a lost one: as a program does that has crashed
    std::chrono::milliseconds dribble {0}; //!< before each sixteenth of the body
};

Reply textReply(int status, std::string text);
//! No answer, but the end of the connection after the delay. Its status is 0.
Reply lostReply(std::chrono::milliseconds delay = {});

} // namespace sandbox
