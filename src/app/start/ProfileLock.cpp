#include "app/start/ProfileLock.h"

#include "app/Logging.h"
#include "platform/storage/PrivateFile.h"

#include <QFile>
#include <QFileInfo>

#include <sys/file.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

ProfileLock::ProfileLock(const QString &folder, const QString &notePath)
    : m_folder(folder)
    , m_notePath(notePath)
{
    PrivateFile::makeParentFolder(notePath);
    // Closed in the programs that this one starts: the lock is held until its last copy is closed.
    m_descriptor
        = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_descriptor == -1)
        qCWarning(lcApp) << folder << "cannot be opened:" << qt_error_string();
}

ProfileLock::~ProfileLock()
{
    if (m_descriptor != -1)
        ::close(m_descriptor);
}

bool ProfileLock::tryLock()
{
    if (m_descriptor == -1 || ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        return true;
    if (errno == EWOULDBLOCK || errno == EINTR)
        return false;
    qCWarning(lcApp) << m_folder << "cannot be locked:" << qt_error_string();
    return true;
}

void ProfileLock::leaveNote(const QString &note)
{
    PrivateFile::write(m_notePath, QFile::encodeName(note) + '\n');
}

QString ProfileLock::note() const
{
    // What somebody has put in its place may have no end, or no beginning.
    if (!QFileInfo(m_notePath).isFile())
        return {};
    const QByteArray content = PrivateFile::read(m_notePath).value_or(QByteArray());
    return content.endsWith('\n') ? QFile::decodeName(content.chopped(1)) : QString();
}
