#pragma once

#include <QProcess>

//! Stands in for the system's location service on the bus that the environment names: speaks its
//! interface, grants one client, and tells one position, or none. In a process of its own, as the
//! real one is: this test's program, started with an argument.
class LocationService
{
public:
    enum class Behaviour { Tells, StaysSilent, Denies };

    //! Returns when the service can be called.
    explicit LocationService(Behaviour behaviour);
    ~LocationService();

    //! Waits until a client asks it to begin; the accuracy that the client wants.
    int waitForStart();

    //! Whether this process was started as the service.
    static bool isWanted(int argc, char **argv);
    static int run(int argc, char **argv);

private:
    QProcess m_process;
};
