#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList allRooms {u"platform"_s, u"ui"_s, u"model"_s, u"net"_s, u"session"_s, u"login"_s,
    u"upload"_s, u"services"_s, u"launch"_s, u"web"_s, u"app"_s};

//! The rooms that a room may use besides itself; nothing for a folder that is none.
std::optional<QStringList> mayUse(const QString &room)
{
    static const QStringList ground {u"platform"_s};
    static const QStringList middle {u"platform"_s, u"ui"_s, u"model"_s, u"net"_s, u"session"_s};
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

//! The room that a line names: by an include with a folder, or by the import of a module of ours.
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
    const QString folder = roomNamedBy(line);
    const bool leavesTheHouse = folder.contains(u".."_s) || folder.startsWith(u"qrc:"_s);
    const QString named = folder.section(u'/', 0, 0); // a room may have folders of its own
    if (named.isEmpty() || named == room)
        return true;
    if (!allRooms.contains(named))
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

//! What stands in an element itself, without the elements in it; \a at: of its opening brace.
QString ownPartOf(const QString &qml, qsizetype at)
{
    QString own;
    int depth = 0;
    do {
        depth += qml[at] == u'{' ? 1 : qml[at] == u'}' ? -1 : 0;
        if (depth == 1)
            own += qml[at];
    } while (++at < qml.size() && depth > 0);
    return own;
}

//! The elements of a QML file that would take a foreign text for markup, and fetch what it names.
QStringList markupIn(const QString &qml)
{
    static const QRegularExpression element(u"(?<![\\w.])(?:T\\.)?(Text|Label)\\s*\\{"_s);
    static const QRegularExpression plain(u"\\btextFormat\\s*:\\s*Text\\.PlainText\\b"_s);
    static const QRegularExpression format(u"\\b\\w+\\.(Auto|Rich|Styled|Markdown)Text\\b"_s);
    QStringList found;
    for (auto it = element.globalMatch(qml); it.hasNext();) {
        const auto match = it.next();
        if (!plain.match(ownPartOf(qml, match.capturedEnd() - 1)).hasMatch())
            found << u"line %1"_s.arg(qml.first(match.capturedStart()).count(u'\n') + 1);
    }
    if (const auto match = format.match(qml); match.hasMatch())
        found << match.captured();
    return found;
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

//! Who may use whom, how long a file may grow, and that text of others stays text.
class RoomsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsAWrongLine()
    {
        for (const char *right : {"#include \"model/LoginModel.h\"", "#include \"net/Request.h\"",
                 "#include <sys/stat.h>", "import QtQuick.Controls"})
            QVERIFY2(isAllowed(u"net"_s, QString::fromLatin1(right)), right);
        for (const char *wrong : {"#include \"session/SsoCookies.h\"", "import \"../web\"",
                 "#  include <session/SsoCookies.h>", "#include \"../session/SsoCookies.h\"",
                 "import Vant.Web 1.0", "import Vant.Login as Other",
                 "import \"qrc:/qt/qml/Vant/Web\""})
            QVERIFY2(!isAllowed(u"net"_s, QString::fromLatin1(wrong)), wrong);
    }

    void roomsUseWhatTheyMay_data()
    {
        QTest::addColumn<QString>("folder");
        const QDir source(QStringLiteral(VANT_SOURCES "/src"));
        for (const QString &room : source.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            // A room that is still to be built may be an empty folder.
            if (!QDir(source.filePath(room)).isEmpty())
                QTest::addRow("%s", qPrintable(room)) << QString(u"src/"_s + room);
        }
        QTest::addRow("sandbox") << u"sandbox"_s;
    }

    void roomsUseWhatTheyMay()
    {
        QFETCH(const QString, folder);
        const QString room = folder.section(u'/', -1);
        QVERIFY2(mayUse(room), "a folder that has no place in the house");
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

    void tellsMarkup()
    {
        const QString plain = u"Text {\n    textFormat: Text.PlainText\n}"_s;
        QCOMPARE(markupIn(plain + u"NoticeText { text: a }"_s), QStringList());
        QCOMPARE(markupIn(u"\nText {\n text: a\n"_s + plain + u"}"_s), QStringList {u"line 2"_s});
        QCOMPARE(markupIn(u"component Line: T.Label { text: a }"_s), QStringList {u"line 1"_s});
        QCOMPARE(markupIn(u"TextEdit { textFormat: TextEdit.RichText }"_s),
            QStringList {u"TextEdit.RichText"_s});
    }

    void textsArePlain()
    {
        const QStringList files = filesIn(u"src"_s, {u"*.qml"_s});
        QVERIFY2(!files.isEmpty(), "there is nothing to read");
        for (const QString &file : files) {
            const QStringList found = markupIn(linesOf(file).join(u'\n'));
            // It makes its links itself, and escapes the rest.
            const QStringList allowed = file.endsWith(u"/ui/LinkedText.qml")
                ? QStringList {u"TextEdit.RichText"_s}
                : QStringList();
            QVERIFY2(found == allowed, qPrintable(file + u": "_s + found.join(u", "_s)));
        }
    }

    void noFileIsTooLong()
    {
        constexpr qsizetype mostLines = 400;
        for (const QString &folder : {u"src"_s, u"sandbox"_s, u"tests"_s}) {
            const QStringList files = filesIn(folder,
                {u"*.h"_s, u"*.cpp"_s, u"*.qml"_s, u"*.js"_s, u"*.css"_s, u"*.html"_s, u"*.txt"_s});
            QVERIFY2(!files.isEmpty(), "there is nothing to read");
            // The last line ends with a line feed too.
            for (const QString &file : files)
                QVERIFY2(linesOf(file).size() - 1 <= mostLines, qPrintable(file));
        }
    }
};

QTEST_GUILESS_MAIN(RoomsTest)
#include "RoomsTest.moc"
