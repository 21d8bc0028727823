#pragma once

#include <QMap>
#include <QStringList>

//! The plan of the house: its rooms, whom each may use, and the sub-rooms of each from the top
//! down. Paths are relative to the project.
namespace House {

struct Room
{
    QStringList uses;
    QStringList subrooms; //!< each may use those behind it
};

//! By folder: "src/net", "sandbox", "tests/e2e".
const QMap<QString, Room> &rooms();

//! The room that a file lies in; empty for one outside.
QString roomOf(const QString &path);
//! The sub-room that a file lies in; empty for one that lies in its room directly.
QString subroomOf(const QString &path);

//! Whether a file of one place may name a file of another.
bool mayUse(const QString &from, const QString &to);

//! All files below a folder with these endings, sorted.
QStringList filesIn(const QString &folder, const QStringList &patterns);
QString textOf(const QString &path);

//! The project's file that an include of a file names; empty when it names none.
QString included(const QString &from, const QString &name);

}
