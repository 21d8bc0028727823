#pragma once

#include "http/Envelope.h"

namespace sandbox {

//! One fault: which requests it is for and what becomes of them.
//!
//! For: "action", "start", "path", "method", "host" (a role), "params" (of the query and of a form,
//! {"partNumber": 2}). What becomes of them: "status", "body", "headers", "delay_ms", "cut" (half
//! an answer), "huge" (an answer of that many bytes), "unhandled" (nothing is carried out),
//! "lose" (carried out, but the connection is closed without an answer), "reset" (the same, but the
//! connection is reset), "dribble_ms" (so long a pause before each sixteenth of an answer),
//! "half_body" (half of what a PUT carries is read, then, after "delay_ms", the connection is
//! closed; nothing is carried out).
class Fault
{
public:
    //! No fault at all.
    Fault() = default;
    //! Throws std::invalid_argument that says what is wrong with the description.
    explicit Fault(Json description);

    //! "times" it happens, after "skip" requests that it lets pass.
    int times() const { return m_what.value("times", 1); }
    int skip() const { return m_what.value("skip", 0); }

    bool matches(const Request &request) const;
    //! The request must not be carried out.
    bool replacesHandling() const { return halvesBody() || m_what.value("unhandled", false); }
    bool halvesBody() const { return m_what.value("half_body", false); }
    void spoil(Reply &reply) const;

private:
    Json m_what = Json::object();
};

} // namespace sandbox
