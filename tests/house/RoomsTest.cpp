#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList allRooms {u"platform"_s, u"ui"_s, u"model"_s, u"net"_s, u"session"_s, u"login"_s,
    u"upload"_s, u"services"_s, u"launch"_s, u"web"_s, u"app"_s};

//! The rooms that a room may use besides itself; nothing for a folder that has no place in the house.
std::optional<QStringList> mayUse(const QString &room)
{
    static const QStringList ground {u"platform"_s};
    static const QStringList middle {
        u"platform"_s, u"ui"_s, u"model"_s, u"net"_s, u"session"_s};
    static const QMap<QString, QStringList> table {
        {u"platform"_s, {}},
        {u"ui"_s, ground},
        {u"model"_s, ground},
        {u"net"_s, {u"platform"_s, u"model"_s}},
        {u"session"_s, {u"platform"_s, u"model"_s, u"net"_s}},
        {u"login"_s, middle},
        {u"upload"_s, middle},
        {u"services"_s, middle},
        {u"launch"_s, middle},
        {u"web"_s, middle + QStringList {u"login"_s, u"upload"_s, u"services"_s, u"launch"_s}},
        {u"app"_s, allRooms},
        {u"sandbox"_s, {}},
    };
    const auto found = table.constFind(room);
    return found == table.cend() ? std::nullopt : std::optional(*found);
}

//! The room that a line of a source names: by an include with a folder, or by the import of a module of ours.
QString roomNamedBy(const QString &line)
{
    static const QRegularExpression include(u"^\\s*#\\s*include\\s*[\"<]([^\">]+)/[^/\">]+[\">]"_s);
    static const QRegularExpression module(u"^\\s*import\\s+Vant\\.(\\w+)"_s);
    static const QRegularExpression folder(u"^\\s*import\\s+\"([^\"]+)\""_s);
    for (const auto *form : {&include, &module, &folder}) {
        const auto match = form->match(line);
        if (match.hasMatch())
            return form == &module ? match.captured(1).toLower() : match.captured(1);
    }
    return {};
}

bool isAllowed(const QString &room, const QString &line)
{
    const QString named = roomNamedBy(line);
    const bool leavesTheHouse = named.contains(u".."_s) || named.startsWith(u"qrc:"_s);
    if (named.isEmpty() || named == room)
        return true;
    if (!allRooms.contains(named.section(u'/', 0, 0)))
        return !leavesTheHouse;
    return mayUse(room).value_or(QStringList()).contains(named);
}

QStringList linesOf(const QString &filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(filePath), qPrintable(file.errorString()));
    return QString::fromUtf8(file.readAll()).split(u'\n');
}

QStringList filesIn(const QString &folder, const QStringList &patterns)
{
    QStringList files;
    QDirIterator found(QStringLiteral(VANT_SOURCES) + u'/' + folder, patterns, QDir::Files,
        QDirIterator::Subdirectories);
    while (found.hasNext())
        files << found.next();
    files.sort();
    return files;
}

}

//! Who may use whom, and how long a file may grow.
class RoomsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsAWrongLine_data();
    void tellsAWrongLine();
    void everyFolderIsARoom();
    void roomsUseWhatTheyMay_data();
    void roomsUseWhatTheyMay();
    void noFileIsTooLong_data();
    void noFileIsTooLong();
};

void RoomsTest::tellsAWrongLine_data()
{
    QTest::addColumn<QString>("room");
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("allowed");

    const auto row = [](const char *room, const char *line, bool allowed) {
        QTest::addRow("%s: %s", room, line)
            << QString::fromLatin1(room) << QString::fromLatin1(line) << allowed;
    };
    row("net", R"(#include "model/LoginModel.h")", true);
    row("net", R"(#include "net/RequestItem.h")", true);
    row("net", R"(#include <QObject>)", true);
    row("net", R"(#include <sys/stat.h>)", true);
    row("net", R"(#include "session/SsoCookies.h")", false);
    row("net", R"(#  include <session/SsoCookies.h>)", false);
    row("net", R"(#include "../session/SsoCookies.h")", false);
    row("platform", R"(#include "model/LoginModel.h")", false);
    row("model", R"(#include "ui/Shell.h")", false);
    row("login", R"(#include "upload/Picker.h")", false);
    row("upload", R"(#include "services/Share.h")", false);
    row("services", R"(#include "launch/Ad.h")", false);
    row("launch", R"(#include "login/LoginViewModel.h")", false);
    row("web", R"(#include "upload/Picker.h")", true);
    row("web", R"(#include "app/AppDelegate.h")", false);
    row("app", R"(#include "web/WebView.h")", true);
    row("sandbox", R"(#include "model/UserModel.h")", false);
    row("sandbox", R"(#include "../src/model/UserModel.h")", false);
    row("sandbox", R"(#include "operations/Operations.h")", true);
    row("login", "import Vant.Ui", true);
    row("login", "import QtQuick.Controls", true);
    row("login", "import Vant.Web 1.0", false);
    row("ui", "import Vant.Login as Other", false);
    row("login", R"(import "../web")", false);
    row("login", R"(import "qrc:/qt/qml/Vant/Web")", false);
}

void RoomsTest::tellsAWrongLine()
{
    QFETCH(QString, room);
    QFETCH(QString, line);
    QTEST(isAllowed(room, line), "allowed");
}

void RoomsTest::everyFolderIsARoom()
{
    const QStringList folders
        = QDir(QStringLiteral(VANT_SOURCES "/src")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QVERIFY(!folders.isEmpty());
    for (const QString &folder : folders)
        QVERIFY2(allRooms.contains(folder), qPrintable(folder));
}

void RoomsTest::roomsUseWhatTheyMay_data()
{
    QTest::addColumn<QString>("folder");
    for (const QString &room : allRooms) {
        // A room that is still to be built is no folder, or an empty one.
        if (!QDir(QStringLiteral(VANT_SOURCES "/src/") + room).isEmpty())
            QTest::addRow("%s", qPrintable(room)) << QString(u"src/"_s + room);
    }
    QTest::addRow("sandbox") << u"sandbox"_s;
}

void RoomsTest::roomsUseWhatTheyMay()
{
    QFETCH(QString, folder);
    const QString room = folder.section(u'/', -1);
    const QStringList files
        = filesIn(folder, {u"*.h"_s, u"*.cpp"_s, u"*.qml"_s, u"*.js"_s, u"*.in"_s});
    QVERIFY2(!files.isEmpty(), "there is nothing to read");
    QStringList wrong;
    for (const QString &file : files) {
        const QStringList lines = linesOf(file);
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (!isAllowed(room, lines[i]))
                wrong << u"%1:%2: %3"_s.arg(file).arg(i + 1).arg(lines[i]);
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
}

void RoomsTest::noFileIsTooLong_data()
{
    QTest::addColumn<QString>("folder");
    for (const auto &folder : {u"src"_s, u"sandbox"_s, u"tests"_s})
        QTest::addRow("%s", qPrintable(folder)) << folder;
}

void RoomsTest::noFileIsTooLong()
{
    constexpr qsizetype mostLines = 400;
    QFETCH(QString, folder);
    const QStringList files = filesIn(folder,
        {u"*.h"_s, u"*.cpp"_s, u"*.qml"_s, u"*.js"_s, u"*.css"_s, u"*.html"_s, u"*.txt"_s});
    QVERIFY2(!files.isEmpty(), "there is nothing to read");
    QStringList tooLong;
    for (const QString &file : files) {
        // The last line ends with a line feed too.
        const qsizetype lines = linesOf(file).size() - 1;
        if (lines > mostLines)
            tooLong << u"%1: %2 lines"_s.arg(file).arg(lines);
    }
    QVERIFY2(tooLong.isEmpty(), qPrintable(tooLong.join(u'\n')));
}

QTEST_GUILESS_MAIN(RoomsTest)
#include "RoomsTest.moc"
