#pragma once

#include "support/PlatformProcess.h"

#include <QTest>

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <string>

using Json = nlohmann::ordered_json;

//! A running sandbox and the usual ways to talk to it that share no code with the client's. Hosts
//! are numbered as their addresses: 1 is 127.0.0.1.
class Sandbox : public PlatformProcess
{
public:
    using PlatformProcess::PlatformProcess;

    //! "http://127.0.0.1:41234"
    std::string base(int host = 1) const;
    httplib::Client client(int host = 1) const { return httplib::Client(base(host)); }
    httplib::Result get(const std::string &pathAndQuery, int host = 1) const;
    //! The HTTP status; 0 when no answer came.
    int status(const std::string &pathAndQuery, int host = 1) const;
    //! The JSON body of an answer.
    Json json(const std::string &pathAndQuery, int host = 1) const;
    //! An operation of the login module that signs in.
    Json portal(const std::string &start, const httplib::Params &params,
        const std::string &site = "school01") const;
    //! POSTs to /_control/…; gives the HTTP status.
    int control(const std::string &what, const std::string &body = "{}") const;
};

//! As QCOMPARE, which the conversions of the JSON library confuse.
#define COMPARE(actual, expected) QCOMPARE(Json(actual).dump(), Json(expected).dump())

template <>
char *QTest::toString(const std::string &text);
