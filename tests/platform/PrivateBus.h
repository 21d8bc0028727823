#pragma once

#include "support/Patience.h"

#include <QProcess>

#include <csignal>

//! A session bus with an unlocked keyring on it, both a test's own. The environment names the bus
//! for all that the process does from then on: programs find each other once a process, so it
//! stands before anything that uses one.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus()
    {
        endKeyring();
        end(m_daemon);
    }

    void endKeyring()
    {
        resumeKeyring();
        end(m_keyring);
    }
    //! From now on the keyring answers nobody, until it goes on.
    void pauseKeyring() { ::kill(pid_t(m_keyring.processId()), SIGSTOP); }
    void resumeKeyring()
    {
        if (m_keyring.state() == QProcess::Running)
            ::kill(pid_t(m_keyring.processId()), SIGCONT);
    }

private:
    static void end(QProcess &process)
    {
        process.terminate();
        if (!process.waitForFinished(patienceMs))
            process.kill();
    }

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QProcess m_keyring;
};
