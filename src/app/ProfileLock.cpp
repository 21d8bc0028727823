#include "app/ProfileLock.h"

#include "app/Logging.h"
#include "platform/PrivateFile.h"

#include <QFile>

#include <sys/file.h>
#include <sys/stat.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

ProfileLock::ProfileLock(const QString &filePath)
    : m_filePath(filePath)
{
    PrivateFile::makeParentFolder(filePath);
    // Closed in the programs that this one starts: the lock is held until its last copy is closed.
    m_descriptor = ::open(QFile::encodeName(filePath).constData(),
        O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (m_descriptor == -1)
        qCWarning(lcApp) << filePath << "cannot be opened:" << qt_error_string();
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
    qCWarning(lcApp) << m_filePath << "cannot be locked:" << qt_error_string();
    return true;
}

void ProfileLock::leaveNote(const QString &note)
{
    QFile file;
    if (m_descriptor != -1 && file.open(m_descriptor, QIODevice::WriteOnly) && file.resize(0)
        && file.seek(0))
        file.write(QFile::encodeName(note) + '\n');
}

QString ProfileLock::note() const
{
    const QByteArray content = PrivateFile::read(m_filePath).value_or(QByteArray());
    return content.endsWith('\n') ? QFile::decodeName(content.chopped(1)) : QString();
}
