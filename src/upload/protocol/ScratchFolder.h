#pragma once

#include <QString>

#include <atomic>
#include <mutex>

//! The folder in which the files to be uploaded lie while they are sent; one for all managers,
//! owned by who makes them. Any thread.
class ScratchFolder
{
public:
    //! Lies in the folder of the program's data.
    explicit ScratchFolder(const QString &libraryPath);

    const QString &libraryPath() const { return m_libraryPath; }
    //! The folder, made where it is missing.
    QString make() const;
    //! Removes the folder with everything in it; while a file is being prepared, as soon as that is
    //! done.
    void clear();

    //! While it exists a file is being prepared: until it is open, its path must stand. One at a
    //! time, for paths are named by the second.
    class Preparation
    {
    public:
        //! Waits for its turn, unless it is over before.
        Preparation(ScratchFolder *folder, const std::atomic<bool> &isOver);
        ~Preparation();
        Preparation(const Preparation &) = delete;
        Preparation &operator=(const Preparation &) = delete;

    private:
        ScratchFolder *m_folder;
        std::unique_lock<std::timed_mutex> m_turn;
    };

private:
    void clearIfWanted();

    const QString m_libraryPath;
    const QString m_path;
    std::mutex m_mutex;
    std::timed_mutex m_turns;
    int m_preparations = 0;
    bool m_isToBeCleared = false;
};
