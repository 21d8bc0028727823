#pragma once

#include <QProcess>
#include <QTemporaryDir>

//! A session bus of a test's own, named in the environment for all that the process does from then on.
//! Programs find each other once a process, so it stands before anything that uses the bus.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();

    QString address() const { return m_address; }

    //! Starts an unlocked keyring on the bus, its files in the bus's folder; false when it does not come up.
    bool startKeyring();
    void endKeyring();

private:
    static void end(QProcess &process);

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QProcess m_keyring;
    QString m_address;
};
