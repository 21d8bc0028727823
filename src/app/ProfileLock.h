#pragma once

#include <QString>

//! The right to use a profile, which one process has at a time. It ends with the process, however
//! that ends.
class ProfileLock
{
public:
    //! \a filePath: the lock, in the profile's own folder; made when missing, mode 0600.
    explicit ProfileLock(const QString &filePath);
    ~ProfileLock();
    ProfileLock(const ProfileLock &) = delete;
    ProfileLock &operator=(const ProfileLock &) = delete;

    //! Whether this process has the right from now on. Where the file cannot be made, or the file
    //! system knows no locks, everybody has, which is logged.
    bool tryLock();
    //! Leaves a line for those who come later: the holder's to call.
    void leaveNote(const QString &note);
    //! What the holder has left, null when it has not yet.
    QString note() const;

private:
    QString m_filePath;
    int m_descriptor = -1;
};
