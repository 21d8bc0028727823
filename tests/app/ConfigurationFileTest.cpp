#include "app/ConfigurationFile.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString name = QStringLiteral("school.toml");

std::optional<DeploymentConfiguration> configurationFrom(const QByteArray &text)
{
    const auto parsed = ConfigurationFile::parse(text, name);
    if (const auto *problem = std::get_if<QString>(&parsed))
        qWarning("%s", qPrintable(*problem));
    const auto *configuration = std::get_if<DeploymentConfiguration>(&parsed);
    return configuration ? std::optional(*configuration) : std::nullopt;
}

}

class ConfigurationFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryKey();
    void keepsTheDefaultsOfAbsentKeys_data();
    void keepsTheDefaultsOfAbsentKeys();
    void overridesOneKeyAlone();
    void saysWhereItIsWrong_data();
    void saysWhereItIsWrong();
    void readsAFile();
    void namesAFileThatCannotBeRead();
};

void ConfigurationFileTest::readsEveryKey()
{
    const auto read = configurationFrom(R"(
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
)");
    DeploymentConfiguration expected;
    expected.hosts = {u"http://regions:1/"_s, u"http://rb:2/"_s, u"http://public:3/"_s,
        u"http://base:4/"_s, u"http://portal:5/"_s, u"http://official:6/"_s,
        u"https://content/path/"_s};
    expected.app = {u"120"_s, u"成长平台二"_s, u"older"_s, true};
    expected.customerServiceAccount = u"800012345"_s;
    expected.push
        = {u"mqtts://broker:8883"_s, u"push id"_s, u"push key"_s, u"push secret"_s};
    expected.location = {u"map key"_s, u"https://map/regeo"_s};
    expected.wechat = {u"wx1"_s, u"https://link/"_s, u"https://wx/authorise"_s};
    expected.qq = {u"qq1"_s, u"qq key"_s, u"https://qq/share"_s};
    expected.extraCaFile = u"/etc/school.pem"_s;
    expected.trustedOrigins = QStringList {u"https://a.example"_s, u"http://b.example:81"_s};
    QVERIFY(read.has_value());
    QVERIFY(*read == expected);
}

void ConfigurationFileTest::keepsTheDefaultsOfAbsentKeys_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << ""_ba;
    QTest::newRow("comments") << "# nothing\n\n  # at all"_ba;
    QTest::newRow("empty sections") << "[hosts]\r\n[bridge]\r\n"_ba;
    QTest::newRow("byte order mark") << "\xef\xbb\xbf[app]\n"_ba;
}

void ConfigurationFileTest::keepsTheDefaultsOfAbsentKeys()
{
    QFETCH(QByteArray, text);
    QVERIFY(configurationFrom(text) == DeploymentConfiguration());
}

void ConfigurationFileTest::overridesOneKeyAlone()
{
    DeploymentConfiguration expected;
    expected.hosts.portal = u"http://p/"_s;
    QVERIFY(configurationFrom("hosts.portal = \"http://p/\"") == expected);
}

void ConfigurationFileTest::saysWhereItIsWrong_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem"); //!< its beginning

    QTest::newRow("unknown section") << "[hosts]\n[host]\nrb = 1"_ba
                                     << u"school.toml:2: there is no section [host]"_s;
    QTest::newRow("key without a section")
        << "\nrb = \"http://rb/\""_ba << u"school.toml:2: there is no section [rb]"_s;
    QTest::newRow("section that is a value")
        << "hosts = 5"_ba << u"school.toml:1: there is no section [hosts]"_s;
    QTest::newRow("list of sections")
        << "\n\n[[hosts]]"_ba << u"school.toml:3: there is no section [hosts]"_s;
    QTest::newRow("unknown key") << "# c\n[hosts]\nrb = \"http://rb/\"\nrB = \"http://rb/\""_ba
                                 << u"school.toml:4: there is no key hosts.rB"_s;
    QTest::newRow("number for a text")
        << "[app]\nbuild = 120"_ba << u"school.toml:2: app.build: a text in quotes is wanted"_s;
    QTest::newRow("section for a text")
        << "[app.build]\nx = 1"_ba << u"school.toml:1: app.build: a text in quotes is wanted"_s;
    QTest::newRow("text for a boolean") << "[app]\n\npatriarch = \"true\""_ba
                                        << u"school.toml:3: app.patriarch: true or false"_s;
    QTest::newRow("number for a boolean")
        << "[app]\npatriarch = 1"_ba << u"school.toml:2: app.patriarch: true or false"_s;
    QTest::newRow("no such screen")
        << "[app]\nlogin_screen = \"newest\""_ba
        << u"school.toml:2: app.login_screen: one of these is wanted: current, older"_s;
    QTest::newRow("address without the last slash")
        << "[hosts]\nrb = \"https://rb.example\""_ba
        << u"school.toml:2: hosts.rb: a base address is wanted"_s;
    QTest::newRow("address without a scheme") << "[hosts]\nrb = \"rb.example/\""_ba
                                              << u"school.toml:2: hosts.rb: a base address"_s;
    QTest::newRow("address of another kind") << "[hosts]\nrb = \"ftp://rb.example/\""_ba
                                             << u"school.toml:2: hosts.rb: a base address"_s;
    QTest::newRow("address that is a number")
        << "[hosts]\nrb = 80"_ba << u"school.toml:2: hosts.rb: a base address"_s;
    QTest::newRow("one origin, no list")
        << "[bridge]\ntrusted_origins = \"https://a\""_ba
        << u"school.toml:2: bridge.trusted_origins: a list of origins"_s;
    QTest::newRow("origin that is none")
        << "[bridge]\ntrusted_origins = [\n\"https://a\",\n\"a.example\"]"_ba
        << u"school.toml:2: bridge.trusted_origins: a list of origins"_s;
    QTest::newRow("syntax") << "[app]\nbuild = \"1\"\npatriarch = maybe"_ba << u"school.toml:3: "_s;
    QTest::newRow("open quotes") << "[app]\nbuild = \"1\n"_ba << u"school.toml:2: "_s;
    QTest::newRow("same key twice")
        << "[app]\nbuild = \"1\"\nbuild = \"2\""_ba << u"school.toml:3: "_s;
    QTest::newRow("not UTF-8") << "[app]\nbuild = \"\xff\""_ba << u"school.toml:2: "_s;
}

void ConfigurationFileTest::saysWhereItIsWrong()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    const auto parsed = ConfigurationFile::parse(text, name);
    const auto *said = std::get_if<QString>(&parsed);
    QVERIFY(said);
    QVERIFY2(said->startsWith(problem), qPrintable(*said));
    QVERIFY2(said->size() > name.size() + 5 && !said->contains(u'\n'), qPrintable(*said));
}

void ConfigurationFileTest::readsAFile()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"school.toml"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[app]\nbuild = \"77\"\n");
    file.close();
    const auto read = ConfigurationFile::read(file.fileName());
    QVERIFY(std::holds_alternative<DeploymentConfiguration>(read));
    QCOMPARE(std::get<DeploymentConfiguration>(read).app.build, u"77"_s);
}

void ConfigurationFileTest::namesAFileThatCannotBeRead()
{
    const QTemporaryDir folder;
    for (const QString &path : {folder.filePath(u"missing.toml"_s), folder.path()}) {
        const auto read = ConfigurationFile::read(path);
        QVERIFY(std::holds_alternative<QString>(read));
        const QString problem = std::get<QString>(read);
        QVERIFY2(problem.startsWith(path + u": "_s) && problem.size() > path.size() + 5,
            qPrintable(problem));
    }
}

QTEST_GUILESS_MAIN(ConfigurationFileTest)
#include "ConfigurationFileTest.moc"
