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

class ProfilePathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aProfileHoldsAllOfItsState();
    void oneFolderIsOneProfile_data();
    void oneFolderIsOneProfile();
    void twoProfilesShareNothing();
    void theOrdinaryOneLivesInTheUsersFolders();

private:
    QTemporaryDir m_home;
};

void ProfilePathsTest::initTestCase()
{
    for (const char *folder : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(folder, m_home.path().toUtf8());
    qputenv("XDG_RUNTIME_DIR", m_home.path().toUtf8());
    QVERIFY(QFile::setPermissions(
        m_home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void ProfilePathsTest::aProfileHoldsAllOfItsState()
{
    const QString folder = m_home.filePath(u"new/"_s + QString(150, u'x'));
    const ProfilePaths paths(folder);
    QVERIFY(QFileInfo(folder).isDir());
    QStringList state = statePaths(paths);
    for (const QString &path : state)
        QVERIFY2(path.startsWith(folder + u'/'), qPrintable(path));
    QCOMPARE(state.removeDuplicates(), 0);
    QVERIFY(paths.instanceSocket.size() <= longestSocketPath);
    QVERIFY(!paths.name.isEmpty());
}

void ProfilePathsTest::oneFolderIsOneProfile_data()
{
    QTest::addColumn<QString>("spelling");
    QTest::newRow("slash") << u"a/"_s;
    QTest::newRow("detour") << u"a/../a/."_s;
    QTest::newRow("link") << u"link"_s;
}

void ProfilePathsTest::oneFolderIsOneProfile()
{
    QFETCH(QString, spelling);
    const ProfilePaths plain(m_home.filePath(u"a"_s));
    QFile::link(m_home.filePath(u"a"_s), m_home.filePath(u"link"_s));
    const ProfilePaths other(m_home.path() + u'/' + spelling);
    QCOMPARE(other.name, plain.name);
    QCOMPARE(other.instanceSocket, plain.instanceSocket);
    QCOMPARE(other.settings, plain.settings);
}

void ProfilePathsTest::twoProfilesShareNothing()
{
    const ProfilePaths profiles[] {
        ProfilePaths(m_home.filePath(u"a"_s)), ProfilePaths(m_home.filePath(u"b"_s)),
        ProfilePaths(QString())};
    QStringList all;
    for (const ProfilePaths &paths : profiles)
        all << statePaths(paths) << paths.instanceSocket << u"name "_s + paths.name;
    QCOMPARE(all.removeDuplicates(), 0);
}

void ProfilePathsTest::theOrdinaryOneLivesInTheUsersFolders()
{
    const ProfilePaths paths((QString()));
    QVERIFY(paths.name.isEmpty());
    const QStringList own = statePaths(paths) + QStringList {paths.instanceSocket};
    for (const QString &path : own)
        QVERIFY2(path.startsWith(m_home.path() + u'/'), qPrintable(path));
}

QTEST_GUILESS_MAIN(ProfilePathsTest)
#include "ProfilePathsTest.moc"
