#pragma once

#include <QString>

//! The right to use a profile, which one process has at a time. It ends with the process, however
//! that ends.
class ProfileLock
{
public:
    //! \a folder: the profile's own, which is locked itself: nobody can put another in its place as
    //! they could with a file. \a notePath: the holder's note, mode 0600.
    ProfileLock(const QString &folder, const QString &notePath);
    ~ProfileLock();
    ProfileLock(const ProfileLock &) = delete;
    ProfileLock &operator=(const ProfileLock &) = delete;

    //! Whether this process has the right from now on. Where the folder cannot be opened, or the
    //! file system knows no locks, everybody has, which is logged.
    bool tryLock();
    //! Leaves a line for those who come later: the holder's to call.
    void leaveNote(const QString &note);
    //! What the holder has left, null when it has not yet.
    QString note() const;

private:
    QString m_folder;
    QString m_notePath;
    int m_descriptor = -1;
};
