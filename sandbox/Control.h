#pragma once

#include "Certificate.h"
#include "Faults.h"
#include "Overrides.h"
#include "Platform.h"
#include "Trace.h"

namespace sandbox {

//! What tests and rehearsals ask of the sandbox itself, below /_control/ of the base address. Never
//! traced, delayed or spoilt.
//!
//!   GET  trace?since=N     entries from number N on
//!   GET  certificate.pem   of the TLS host
//!   POST faults            JSON, see Faults::add
//!   POST settings          JSON, see Overrides::set
//!   POST reset             everything as it was at the start
class Control
{
public:
    Control(Platform &platform, Trace &trace, Faults &faults, Overrides &overrides,
        const Certificate &certificate);

    static bool owns(const Request &request);
    Reply answer(const Request &request);

private:
    Platform &m_platform;
    Trace &m_trace;
    Faults &m_faults;
    Overrides &m_overrides;
    const Certificate &m_certificate;
};

} // namespace sandbox
