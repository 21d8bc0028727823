#include "house/House.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

//! What a line names that no room may: a way out of the folders that rooms are told apart by.
bool leavesTheHouse(const QString &line)
{
    static const QRegularExpression way(
        u"^\\s*(#\\s*include\\s*[\"<][^\">]*\\.\\./|import\\s+\"[^\"]*(\\.\\.|qrc:))"_s);
    return way.match(line).hasMatch();
}

//! The name of what a line includes; null when it includes nothing.
QString nameIncludedBy(const QString &line)
{
    static const QRegularExpression include(u"^\\s*#\\s*include\\s*[\"<]([^\">]+)[\">]"_s);
    return include.match(line).captured(1);
}

//! The room whose module a line imports; empty when it imports none of ours.
QString roomImportedBy(const QString &line)
{
    static const QRegularExpression module(u"^\\s*import\\s+Vant\\.(\\w+)"_s);
    const auto match = module.match(line);
    return match.hasMatch() ? u"src/"_s + match.captured(1).toLower() : QString();
}

//! Whether a line of a file names only what the file may use.
bool isAllowed(const QString &file, const QString &line)
{
    if (leavesTheHouse(line))
        return false;
    if (const QString room = roomImportedBy(line); !room.isEmpty())
        return room == House::roomOf(file) || House::mayUse(file, room + u"/x"_s);
    const QString named = House::included(file, nameIncludedBy(line));
    return named.isEmpty() || House::roomOf(named).isEmpty() || House::mayUse(file, named);
}

const QStringList code {u"*.h"_s, u"*.cpp"_s, u"*.qml"_s, u"*.js"_s, u"*.in"_s};

//! Header and source are one: the class.
QString unitOf(const QString &path)
{
    return path.left(path.lastIndexOf(u'.'));
}

using Graph = QMap<QString, QSet<QString>>;

//! Who includes whom in a folder.
Graph includesIn(const QString &folder)
{
    Graph graph;
    for (const QString &file : House::filesIn(folder, {u"*.h"_s, u"*.cpp"_s})) {
        for (const QString &line : House::textOf(file).split(u'\n')) {
            const QString named = House::included(file, nameIncludedBy(line));
            if (!named.isEmpty() && unitOf(named) != unitOf(file))
                graph[unitOf(file)].insert(unitOf(named));
        }
    }
    return graph;
}

//! The members of a circle; none when there is no circle.
QStringList circleIn(const Graph &graph)
{
    QSet<QString> done;
    QStringList path;
    const std::function<bool(const QString &)> closes = [&](const QString &unit) {
        if (const qsizetype start = path.indexOf(unit); start >= 0) {
            path = path.sliced(start);
            return true;
        }
        if (done.contains(unit))
            return false;
        path << unit;
        const QSet<QString> next = graph.value(unit);
        if (std::any_of(next.cbegin(), next.cend(), closes))
            return true;
        path.removeLast();
        done.insert(unit);
        return false;
    };
    for (auto unit = graph.keyBegin(); unit != graph.keyEnd(); ++unit) {
        if (closes(*unit))
            return path;
    }
    return {};
}

}

//! Who may use whom, and how much a folder may hold.
class RoomsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsAWrongLine()
    {
        const QString net = u"src/net/request/RequestItem.cpp"_s;
        for (const char *right : {"#include \"model/LoginModel.h\"", "#include <sys/stat.h>",
                 "#include \"net/Logging.h\"", "#include \"net/shared/HttpCookieParam.h\"",
                 "import QtQuick.Controls"})
            QVERIFY2(isAllowed(net, QString::fromLatin1(right)), right);
        for (const char *wrong : {"#include \"session/SsoCookies.h\"", "import \"../web\"",
                 "#  include <session/SsoCookies.h>", "#include \"../session/SsoCookies.h\"",
                 "#include \"net/catalogue/RequestInterface.h\"", "import Vant.Web 1.0",
                 "import Vant.Login as Other", "import \"qrc:/qt/qml/Vant/Web\""})
            QVERIFY2(!isAllowed(net, QString::fromLatin1(wrong)), wrong);
        QVERIFY(
            !isAllowed(u"src/launch/ad/LaunchAd.cpp"_s, u"#include \"launch/LaunchStage.h\""_s));
        QVERIFY(!isAllowed(u"sandbox/http/Message.cpp"_s, u"#include \"control/Fault.h\""_s));
    }

    void tellsACircle()
    {
        const Graph straight {{u"a"_s, {u"b"_s, u"c"_s}}, {u"b"_s, {u"c"_s}}};
        QCOMPARE(circleIn(straight), QStringList());
        const Graph round {{u"a"_s, {u"b"_s}}, {u"b"_s, {u"c"_s}}, {u"c"_s, {u"b"_s}}};
        QCOMPARE(circleIn(round), QStringList({u"b"_s, u"c"_s}));
    }

    void usesWhatItMay_data()
    {
        QTest::addColumn<QString>("folder");
        for (const QString &folder : House::rooms().keys())
            QTest::addRow("%s", qPrintable(folder)) << folder;
    }

    void usesWhatItMay()
    {
        QFETCH(const QString, folder);
        QStringList wrong;
        for (const QString &file : House::filesIn(folder, code)) {
            for (const QString &line : House::textOf(file).split(u'\n')) {
                if (!isAllowed(file, line))
                    wrong << file + u": "_s + line;
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    // Views of one room need no import to use each other.
    void viewsUseWhatTheyMay()
    {
        const QStringList views = House::filesIn(u"src"_s, {u"*.qml"_s});
        QStringList wrong;
        for (const QString &file : views) {
            const QString text = House::textOf(file);
            for (const QString &other : views) {
                const QRegularExpression use(
                    u"(?<![\\w.\"])%1\\s*[{.]"_s.arg(unitOf(other).section(u'/', -1)));
                if (other != file && House::roomOf(other) == House::roomOf(file)
                    && !House::mayUse(file, other) && text.contains(use))
                    wrong << file + u" uses "_s + other;
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    void includesNeverRunInACircle()
    {
        for (const QString &folder : {u"src"_s, u"sandbox"_s, u"tests/e2e"_s}) {
            const QStringList circle = circleIn(includesIn(folder));
            QVERIFY2(circle.isEmpty(), qPrintable(circle.join(u" -> ")));
        }
    }

    void everyFolderHasItsPlace()
    {
        constexpr int most = 21;
        for (const QString &top : {u"src"_s, u"sandbox"_s, u"tests"_s}) {
            QMap<QString, int> counts;
            for (const QString &file : House::filesIn(top, code))
                ++counts[file.section(u'/', 0, -2)];
            for (auto folder = counts.cbegin(); folder != counts.cend(); ++folder) {
                QVERIFY2(folder.value() <= most, qPrintable(folder.key()));
                if (top == u"tests" || folder.key().startsWith(u"sandbox/assets"))
                    continue;
                const QString inside = folder.key() + u"/x"_s;
                const QString subroom = House::subroomOf(inside);
                QVERIFY2(!House::roomOf(inside).isEmpty()
                        && (subroom.isEmpty()
                            || House::rooms()[House::roomOf(inside)].subrooms.contains(subroom)),
                    qPrintable(folder.key()));
            }
        }
    }
};

QTEST_GUILESS_MAIN(RoomsTest)
#include "RoomsTest.moc"
