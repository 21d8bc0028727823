#pragma once

#include <QString>

//! Where the state of a run lives: in the user's ordinary folders, or all below one folder.
struct ProfilePaths
{
    //! No places at all.
    ProfilePaths() = default;
    //! \a profile: the folder, null for the ordinary ones.
    explicit ProfilePaths(const QString &profile);

    //! Names this profile among others of the same user; empty for the ordinary one.
    QString name;
    QString settings;
    QString cookies;
    QString keychainFallback;
    QString web; //!< the pages' own storage and cache
    QString cache; //!< answers of servers
    QString qmlCache; //!< the interface, compiled by the toolkit; null: the toolkit's own place
    QString album; //!< saved pictures
    QString videos;
    QString data; //!< the profile's own folder: its lock, and files while they are uploaded
    QString exports; //!< clips made ready for an upload
    QString downloads;
};
