#pragma once

#include "Child.h"

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

//! A running sandbox and the usual ways to talk to it. Hosts are numbered as their addresses: 1 is
//! 127.0.0.1.
class Sandbox {
public:
    explicit Sandbox(const std::vector<std::string>& arguments = {});

    Child& process() { return m_process; }
    int port() const { return m_port; }
    //! "http://127.0.0.1:41234"
    std::string base(int host = 1) const;
    httplib::Client client(int host = 1) const;

    httplib::Result get(const std::string& pathAndQuery, int host = 1) const;
    //! The JSON body of an answer with HTTP status 200; null and a failure otherwise.
    Json json(const std::string& pathAndQuery, int host = 1) const;
    //! An operation of the login module that signs in at school01, or at another site.
    Json portal(const std::string& start, const httplib::Params& params,
        const std::string& site = "school01") const;
    //! POSTs to /_control/…; gives the HTTP status.
    int control(const std::string& what, const std::string& body = "{}") const;
    Json traced() const;
    //! Waits until that many requests have been traced; a failure when they do not come in good
    //! time.
    void waitForRequests(size_t count) const;

private:
    Child m_process;
    int m_port = 0;
};
