#include "platform/storage/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

}

void PrivateFile::makeParentFolder(const QString &filePath)
{
    const QDir folder = QFileInfo(filePath).absoluteDir();
    if (folder.exists())
        return;
    QDir().mkpath(folder.absolutePath());
    QFile::setPermissions(
        folder.absolutePath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void PrivateFile::prepareSettings(const QString &filePath)
{
    makeParentFolder(filePath);
    QFile::remove(filePath + QStringLiteral(".lock"));
    QFile file(filePath);
    if (file.open(QIODevice::Append, ownerOnly))
        file.setPermissions(ownerOnly);
}

bool PrivateFile::write(const QString &filePath, const QByteArray &content)
{
    makeParentFolder(filePath);
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // Before the first byte, so that no other user ever finds it readable.
    file.setPermissions(ownerOnly);
    // The toolkit's own end of it does not tell whether the last piece was written.
    return file.write(content) == content.size() && file.flush() && file.commit();
}

std::optional<QByteArray> PrivateFile::read(const QString &filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}
