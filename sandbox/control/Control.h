#pragma once

#include "accounts/Platform.h"
#include "control/Faults.h"
#include "control/Trace.h"
#include "files/FileStore.h"
#include "http/Certificate.h"
#include "operations/Overrides.h"
#include "push/PushService.h"

namespace sandbox {

//! What tests and rehearsals ask of the sandbox itself, below /_control/ of the base address. Never
//! traced, delayed or spoilt.
//!
//!   GET  trace?since=N     entries from number N on
//!   GET  certificate.pem   of the TLS host
//!   GET  storage           the uploaded files, see FileStore::description
//!   GET  push              the broker's addresses, see PushService::description
//!   POST push              sends one message, see PushService::send
//!   POST broker            stops and starts the broker, see PushService::setRunning
//!   POST faults            JSON, see Fault
//!   POST settings          JSON, see Overrides::set
//!   GET  notices           what clients are told at their start, see Notices
//!   POST notices           JSON, see Notices::set
//!   POST reset             everything as it was at the start, a folder given for uploads excepted
class Control
{
public:
    Control(Platform &platform, FileStore &store, PushService &push, Trace &trace, Faults &faults,
        Overrides &overrides, const Certificate &certificate);

    static bool owns(const Request &request);
    Reply answer(const Request &request);

private:
    Platform &m_platform;
    FileStore &m_store;
    PushService &m_push;
    Trace &m_trace;
    Faults &m_faults;
    Overrides &m_overrides;
    const Certificate &m_certificate;
};

} // namespace sandbox
