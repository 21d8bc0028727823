#include "app/CommandLine.h"
#include "app/ConfigurationFile.h"
#include "app/ProfilePaths.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// What an address of a local socket has room for.
constexpr qsizetype longestSocketPath = 107;

QStringList statePaths(const ProfilePaths &paths)
{
    return {paths.settings, paths.cookies, paths.keychainFallback, paths.web, paths.cache,
        paths.album, paths.downloads};
}

}

//! What a start goes by: command line, configuration and profile. What the command line refuses is
//! seen at the program itself.
class StartTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_home;

private Q_SLOTS:
    void initTestCase()
    {
        for (const char *folder :
            {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            qputenv(folder, m_home.path().toUtf8());
    }

    void aProfileHoldsAllOfItsStateAndSharesNothing()
    {
        const QString folder = m_home.filePath(u"new/"_s + QString(150, u'x'));
        const ProfilePaths paths(folder), ordinary((QString()));
        for (const QString &path : statePaths(paths))
            QVERIFY2(path.startsWith(folder + u'/'), qPrintable(path));
        QVERIFY(QFileInfo(folder).isDir() && !paths.name.isEmpty());
        QVERIFY(paths.instanceSocket.size() <= longestSocketPath);
        QStringList all = statePaths(ordinary) + QStringList {ordinary.instanceSocket};
        for (const QString &path : std::as_const(all))
            QVERIFY2(path.startsWith(m_home.path() + u'/'), qPrintable(path));
        all += statePaths(paths) + QStringList {paths.instanceSocket};
        QCOMPARE(all.removeDuplicates(), 0);
    }

    void oneFolderIsOneProfileHoweverItIsWritten()
    {
        const ProfilePaths plain(m_home.filePath(u"a"_s));
        QVERIFY(QFile::link(m_home.filePath(u"a"_s), m_home.filePath(u"link"_s)));
        for (const QString &spelling : {u"a/"_s, u"./b/../a"_s, u"link"_s})
            QCOMPARE(ProfilePaths(m_home.filePath(spelling)).instanceSocket, plain.instanceSocket);
    }

    void takesEveryOption()
    {
        const auto parsed = CommandLine::parse({u"--config"_s, u"a b.toml"_s,
            u"wx1://oauth?code=c%20d&state=s"_s, u"--profile=/p"_s, u"--sandbox"_s,
            u"--camera-feed"_s, u"f.png"_s, u"--push"_s, u"{\"payload\": \"学\", \"n\": 5}"_s});
        const auto *line = std::get_if<CommandLine>(&parsed);
        QVERIFY(line && line->sandbox && !line->version);
        QCOMPARE(line->configFile, u"a b.toml"_s);
        QCOMPARE(line->profile, u"/p"_s);
        QCOMPARE(line->cameraFeed, u"f.png"_s);
        QCOMPARE(line->push, (QVariantMap {{u"payload"_s, u"学"_s}, {u"n"_s, 5}}));
        QCOMPARE(line->url.toEncoded(), "wx1://oauth?code=c%20d&state=s");
    }

    void readsEveryKey();

    void saysWhereItIsWrong_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("problem"); //!< its beginning, after the file's name
        const auto row = [](const char *name, const QByteArray &text, const QString &problem) {
            QTest::newRow(name) << text << problem;
        };
        row("section", "[hosts]\n[host]\nrb = 1", u"2: there is no section [host]"_s);
        row("section that is a value", "hosts = 5", u"1: there is no section [hosts]"_s);
        row("list of sections", "\n\n[[hosts]]", u"3: there is no section [hosts]"_s);
        row("key", "# c\n[hosts]\nrB = \"http://rb/\"", u"3: there is no key hosts.rB"_s);
        row("number", "[app]\nbuild = 120", u"2: app.build: a text in quotes is wanted"_s);
        row("boolean", "[app]\npatriarch = \"true\"", u"2: app.patriarch: true or false"_s);
        row("screen", "[app]\nlogin_screen = \"newest\"",
            u"2: app.login_screen: one of these is wanted: current, older"_s);
        for (const char *address : {"https://rb.example", "rb.example/", "ftp://rb.example/"})
            row(address, "[hosts]\nrb = \"" + QByteArray(address) + '"',
                u"2: hosts.rb: a base address is wanted"_s);
        row("origin", "[bridge]\ntrusted_origins = [\n\"https://a\",\n\"a.example\"]",
            u"2: bridge.trusted_origins: a list of origins"_s);
        row("syntax", "[app]\nbuild = \"1\"\npatriarch = maybe", u"3: "_s);
        row("not UTF-8", "[app]\nbuild = \"\xff\"", u"2: "_s);
    }

    void saysWhereItIsWrong()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, problem);
        const auto parsed = ConfigurationFile::parse(text, u"school.toml"_s);
        const auto *said = std::get_if<QString>(&parsed);
        QVERIFY(said);
        QVERIFY2(said->startsWith(u"school.toml:"_s + problem), qPrintable(*said));
        QVERIFY2(said->size() > 16 && !said->contains(u'\n'), qPrintable(*said));
    }
};

void StartTest::readsEveryKey()
{
    const auto read = ConfigurationFile::parse(R"(
[hosts]
regions = "http://regions:1/"
rb = "http://rb:2/"
public = "http://public:3/"
base = "http://base:4/"
portal = "http://portal:5/"
official = "http://official:6/"
content = "https://content/path/"
[app]
build = "120"
display_name = "成长平台二"
login_screen = "older"
patriarch = true
[service]
customer_service_account = "800012345"
[push]
broker = "mqtts://broker:8883"
app_id = "push id"
app_key = "push key"
app_secret = "push secret"
[location]
map_key = "map key"
regeocode_url = "https://map/regeo"
[wechat]
app_id = "wx1"
universal_link = "https://link/"
authorise_url = "https://wx/authorise"
[qq]
app_id = "qq1"
app_key = "qq key"
share_url = "https://qq/share"
[tls]
extra_ca_file = "/etc/school.pem"
[bridge]
trusted_origins = ["https://a.example", "http://b.example:81"]
)",
        u"school.toml"_s);
    DeploymentConfiguration expected;
    expected.hosts
        = {u"http://regions:1/"_s, u"http://rb:2/"_s, u"http://public:3/"_s, u"http://base:4/"_s,
            u"http://portal:5/"_s, u"http://official:6/"_s, u"https://content/path/"_s};
    expected.app = {u"120"_s, u"成长平台二"_s, u"older"_s, true};
    expected.customerServiceAccount = u"800012345"_s;
    expected.push = {u"mqtts://broker:8883"_s, u"push id"_s, u"push key"_s, u"push secret"_s};
    expected.location = {u"map key"_s, u"https://map/regeo"_s};
    expected.wechat = {u"wx1"_s, u"https://link/"_s, u"https://wx/authorise"_s};
    expected.qq = {u"qq1"_s, u"qq key"_s, u"https://qq/share"_s};
    expected.extraCaFile = u"/etc/school.pem"_s;
    expected.trustedOrigins = {u"https://a.example"_s, u"http://b.example:81"_s};
    QVERIFY(std::holds_alternative<DeploymentConfiguration>(read));
    QVERIFY(std::get<DeploymentConfiguration>(read) == expected);
}

QTEST_GUILESS_MAIN(StartTest)
#include "StartTest.moc"
