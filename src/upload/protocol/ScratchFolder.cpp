#include "upload/protocol/ScratchFolder.h"

#include <QDir>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds turnCheck {50};

}

ScratchFolder::ScratchFolder(const QString &libraryPath)
    : m_libraryPath(libraryPath)
    , m_path(libraryPath + QStringLiteral("/uploadFile"))
{
}

QString ScratchFolder::make() const
{
    QDir().mkpath(m_path);
    return m_path;
}

void ScratchFolder::clear()
{
    const std::scoped_lock lock(m_mutex);
    m_isToBeCleared = true;
    clearIfWanted();
}

void ScratchFolder::clearIfWanted()
{
    if (m_preparations > 0 || !m_isToBeCleared)
        return;
    m_isToBeCleared = false;
    QDir(m_path).removeRecursively();
}

ScratchFolder::Preparation::Preparation(ScratchFolder *folder, const std::atomic<bool> &isOver)
    : m_folder(folder)
    , m_turn(folder->m_turns, std::defer_lock)
{
    while (!isOver && !m_turn.try_lock_for(turnCheck)) { }
    const std::scoped_lock lock(m_folder->m_mutex);
    ++m_folder->m_preparations;
}

ScratchFolder::Preparation::~Preparation()
{
    const std::scoped_lock lock(m_folder->m_mutex);
    --m_folder->m_preparations;
    m_folder->clearIfWanted();
}
