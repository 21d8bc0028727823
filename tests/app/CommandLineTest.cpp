#include "app/CommandLine.h"

#include <QTest>

using namespace Qt::StringLiterals;

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsNothing();
    void takesEverything();
    void takesAPush_data();
    void takesAPush();
    void refuses_data();
    void refuses();

private:
    static std::optional<CommandLine> parsed(const QStringList &arguments);
};

std::optional<CommandLine> CommandLineTest::parsed(const QStringList &arguments)
{
    const auto result = CommandLine::parse(arguments);
    if (const auto *problem = std::get_if<QString>(&result))
        qWarning("%s", qPrintable(*problem));
    const auto *line = std::get_if<CommandLine>(&result);
    return line ? std::optional(*line) : std::nullopt;
}

void CommandLineTest::nothingIsNothing()
{
    const auto line = parsed({});
    QVERIFY(line.has_value());
    QVERIFY(line->configFile.isNull() && line->profile.isNull() && line->cameraFeed.isNull());
    QVERIFY(!line->sandbox && !line->version && !line->push && line->url.isEmpty());
}

void CommandLineTest::takesEverything()
{
    const auto line = parsed({u"--config"_s, u"a b.toml"_s, u"wx1://oauth?code=c%20d&state=s"_s,
        u"--profile=/p"_s, u"--sandbox"_s, u"--camera-feed"_s, u"f.png"_s, u"--push"_s, u"{}"_s,
        u"--version"_s});
    QVERIFY(line.has_value());
    QCOMPARE(line->configFile, u"a b.toml"_s);
    QCOMPARE(line->profile, u"/p"_s);
    QCOMPARE(line->cameraFeed, u"f.png"_s);
    QVERIFY(line->sandbox && line->version);
    QCOMPARE(line->push, QVariantMap());
    QCOMPARE(line->url.toEncoded(), "wx1://oauth?code=c%20d&state=s");
}

void CommandLineTest::takesAPush_data()
{
    QTest::addColumn<QString>("json");
    QTest::addColumn<QVariantMap>("userInfo");
    QTest::newRow("a page") << uR"({"payload": "https://p/?a=1&b=学"})"_s
                            << QVariantMap {{u"payload"_s, u"https://p/?a=1&b=学"_s}};
    QTest::newRow("members of other types")
        << uR"({"payload": 5, "aps": {"badge": 1}})"_s
        << QVariantMap {{u"payload"_s, 5}, {u"aps"_s, QVariantMap {{u"badge"_s, 1}}}};
}

void CommandLineTest::takesAPush()
{
    QFETCH(QString, json);
    QFETCH(QVariantMap, userInfo);
    const auto line = parsed({u"--push"_s, json});
    QVERIFY(line.has_value());
    QCOMPARE(line->push, userInfo);
}

void CommandLineTest::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named"); //!< what the refusal names
    QTest::newRow("unknown option") << QStringList {u"--colour"_s} << u"colour"_s;
    QTest::newRow("missing value") << QStringList {u"--config"_s} << u"config"_s;
    QTest::newRow("value for a switch") << QStringList {u"--sandbox=yes"_s} << u"sandbox"_s;
    for (const auto &json : {u"hello"_s, u"[1]"_s, u"\"x\""_s, u"{\"a\":"_s, u""_s})
        QTest::addRow("push: %s", qPrintable(json)) << QStringList {u"--push"_s, json} << u"--push"_s;
    QTest::newRow("two URLs") << QStringList {u"wx1://a"_s, u"wx1://b"_s} << u"wx1://b"_s;
    QTest::newRow("a file name") << QStringList {u"school.toml"_s} << u"school.toml"_s;
    QTest::newRow("a broken URL") << QStringList {u"http://a b/"_s} << u"http://a b/"_s;
}

void CommandLineTest::refuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const auto result = CommandLine::parse(arguments);
    const auto *problem = std::get_if<QString>(&result);
    QVERIFY(problem);
    QVERIFY2(problem->contains(named) && !problem->contains(u'\n'), qPrintable(*problem));
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
