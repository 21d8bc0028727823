#include "house/House.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

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

}

//! How long a file may grow, and that text of others stays text.
class FilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
        for (const QString &file : House::filesIn(u"src"_s, {u"*.qml"_s})) {
            const QStringList found = markupIn(House::textOf(file));
            // It makes its links itself, and escapes the rest.
            const QStringList allowed = file.endsWith(u"/LinkedText.qml")
                ? QStringList {u"TextEdit.RichText"_s}
                : QStringList();
            QVERIFY2(found == allowed, qPrintable(file + u": "_s + found.join(u", "_s)));
        }
    }

    void noneIsTooLong()
    {
        constexpr qsizetype mostLines = 400;
        for (const QString &folder : {u"src"_s, u"sandbox"_s, u"tests"_s}) {
            const QStringList files = House::filesIn(folder,
                {u"*.h"_s, u"*.cpp"_s, u"*.qml"_s, u"*.js"_s, u"*.css"_s, u"*.html"_s, u"*.txt"_s});
            for (const QString &file : files)
                QVERIFY2(House::textOf(file).count(u'\n') <= mostLines, qPrintable(file));
        }
    }
};

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"
