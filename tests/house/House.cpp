#include "house/House.h"

#include <QDir>
#include <QDirIterator>

using namespace Qt::StringLiterals;

namespace {

const QDir project(QStringLiteral(VANT_SOURCES));

QStringList folders(const char *names)
{
    return QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts);
}

//! What lies in a room directly is its top, but for its log, which is its ground.
bool isGround(const QString &path)
{
    return path.section(u'/', -1) == u"Logging.h";
}

}

const QMap<QString, House::Room> &House::rooms()
{
    static const QStringList middle = folders("platform ui model net session");
    static const QMap<QString, Room> rooms {
        {u"src/platform"_s,
            {{}, folders("push services media http transport storage desktop time modules")}},
        {u"src/ui"_s,
            {folders("platform"), folders("picker shell navigation feedback controls theme")}},
        {u"src/model"_s, {folders("platform"), {}}},
        {u"src/net"_s, {folders("platform model"), folders("catalogue request shared")}},
        {u"src/session"_s, {folders("platform model net"), {}}},
        {u"src/login"_s, {middle, folders("region school pinyin screen enabling wechat form")}},
        {u"src/upload"_s, {middle, folders("picker album preparation protocol")}},
        {u"src/services"_s, {middle, folders("scan share")}},
        {u"src/launch"_s, {middle, folders("ad guide notices")}},
        {u"src/web"_s,
            {middle + folders("login upload services launch"),
                folders("home portal secondary engine files questions loading travel host permissions "
                        "profiles bridge")}},
        {u"src/app"_s,
            {middle + folders("login upload services launch web"),
                folders("parts start delegate")}},
        {u"sandbox"_s, {{}, folders("control portal operations files push accounts schools http")}},
        {u"tests/e2e"_s, {middle + folders("upload web app"), folders("steps driver")}},
    };
    return rooms;
}

QString House::roomOf(const QString &path)
{
    const QString folder = path.section(u'/', 0, path.startsWith(u"sandbox/") ? 0 : 1);
    return rooms().contains(folder) ? folder : QString();
}

QString House::subroomOf(const QString &path)
{
    const QString inside = path.sliced(roomOf(path).size() + 1);
    return inside.contains(u'/') ? inside.section(u'/', 0, 0) : QString();
}

bool House::mayUse(const QString &from, const QString &to)
{
    const Room room = rooms().value(roomOf(from));
    if (roomOf(from) != roomOf(to))
        return room.uses.contains(roomOf(to).section(u'/', 1));
    if (subroomOf(to).isEmpty())
        return subroomOf(from).isEmpty() || isGround(to);
    return subroomOf(from).isEmpty()
        || room.subrooms.indexOf(subroomOf(from)) <= room.subrooms.indexOf(subroomOf(to));
}

QStringList House::filesIn(const QString &folder, const QStringList &patterns)
{
    QStringList files;
    QDirIterator found(
        project.filePath(folder), patterns, QDir::Files, QDirIterator::Subdirectories);
    while (found.hasNext())
        files << project.relativeFilePath(found.next());
    files.sort();
    // A check of nothing would always hold.
    if (files.isEmpty())
        qFatal("there is nothing to read in %s", qPrintable(folder));
    return files;
}

QString House::textOf(const QString &path)
{
    QFile file(project.filePath(path));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
    return QString::fromUtf8(file.readAll());
}

QString House::included(const QString &from, const QString &name)
{
    if (name.isEmpty())
        return {};
    const QString folder = from.section(u'/', 0, 0);
    for (const QString &path : {folder + u'/' + name, u"src/"_s + name}) {
        if (project.exists(path))
            return path;
    }
    return {};
}
