#pragma once

#include <QProcess>
#include <QTemporaryDir>

//! A session bus with an unlocked keyring on it, both a test's own. The environment names the bus
//! for all that the process does from then on: programs find each other once a process, so it
//! stands before anything that uses one.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();

    void endKeyring();
    //! From now on the keyring answers nobody, until it goes on.
    void pauseKeyring();
    void resumeKeyring();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QProcess m_keyring;
};
