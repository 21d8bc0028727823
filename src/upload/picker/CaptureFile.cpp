#include "upload/picker/CaptureFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

CaptureFile::CaptureFile(const QString &folder, Kind kind)
    : m_folder(folder)
    , m_kind(kind)
{
}

CaptureFile::~CaptureFile()
{
    discard();
}

QString CaptureFile::begin()
{
    discard();
    QDir().mkpath(m_folder);
    m_name = QDateTime::currentDateTime().toString(u"yyyyMMdd_HHmmss_zzz"_s);
    m_name = m_kind == Kind::Picture ? u"IMG_%1.jpg"_s.arg(m_name) : u"VID_%1.mp4"_s.arg(m_name);
    return QDir(m_folder).filePath(u'.' + m_name);
}

QString CaptureFile::keep()
{
    const QDir folder(m_folder);
    const QString hidden = folder.filePath(u'.' + m_name);
    const QString shown = folder.filePath(m_name);
    if (m_name.isEmpty() || QFileInfo(hidden).size() == 0 || !QFile::rename(hidden, shown))
        return {};
    m_name.clear();
    return QFileInfo(shown).canonicalFilePath();
}

void CaptureFile::discard()
{
    if (!m_name.isEmpty())
        QFile::remove(QDir(m_folder).filePath(u'.' + m_name));
    m_name.clear();
}
