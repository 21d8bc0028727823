#include "platform/storage/UserDefaults.h"

#include "PrivateBus.h"
#include "platform/storage/KeyChainStore.h"
#include "support/Table.h"

#include <QDBusInterface>
#include <QRegularExpression>
#include <QSet>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString token = QStringLiteral("token");
const QString cookies = QStringLiteral("cookies");
const QString password = QStringLiteral("password");
const QString plain = QStringLiteral("plain");
const QStringList secrets {token, cookies, password};
//! A part of every secret here, in letters that no file writes otherwise.
const QString marker = QStringLiteral("s3cr3t");
const QString keychainFile = QStringLiteral("/keychain.ini");
const QString settingsFile = QStringLiteral("/settings.ini");

//! One life of the settings of a folder, with the keychain that has their keys.
struct Life
{
    explicit Life(const QString &folder)
        : keychain(folder, folder + keychainFile)
        , defaults(folder + settingsFile, &keychain, secrets)
    {
    }

    void set(const QVariant &value, const QString &key)
    {
        defaults.setObject(value, key);
        defaults.synchronize();
    }
    void awaitKeys()
    {
        bool readable = false;
        defaults.whenReadable([&] { readable = true; });
        TRY_VERIFY(readable);
    }

    KeyChainStore keychain;
    UserDefaults defaults;
};

//! Opens settings whose secret lies there in the clear, says so, and says when it is sealed.
int migrate(const QString &folder)
{
    Life life(folder);
    for (const char *said : {"opened", "sealed"}) {
        std::puts(said);
        std::fflush(stdout);
        while (QSettings(folder + settingsFile, QSettings::IniFormat).value(token).typeId()
            == QMetaType::QString)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
    }
    return QCoreApplication::exec();
}

}

//! Secrets among the settings, on a session bus with a keyring.
class SealedDefaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void secretsAreSealedAndRead_data()
    {
        const QVariantMap cookie {{u"Name"_s, u"mo"_s}, {u"Value"_s, marker}};
        Table<QVariant>::rows({{"text", marker + u"学%:\"\n"_s}, {"maps", QVariantList {cookie}},
            {"large", QString(3'000'000, u'x') + marker},
            {"bytes like sealed ones", "1:00:"_ba + marker.toUtf8()}});
    }

    void secretsAreSealedAndRead()
    {
        const auto [value] = Table<QVariant>::row();
        const qsizetype keysBefore = keysInKeyring();
        {
            Life life(path());
            life.set(u"shown"_s, plain);
            // As with one login: the second waits for the first one's key.
            for (const QString &key : secrets) {
                life.set(value, key);
                QCOMPARE(life.defaults.objectForKey(key), value);
            }
            TRY_VERIFY(isSealed(token) && isSealed(cookies));
        }
        QCOMPARE(keysInKeyring(), keysBefore + 1);
        const QByteArray before = file();
        QVERIFY(!before.contains(marker.toUtf8()) && before.contains("plain=shown"));
        QCOMPARE(keyNames().size(), 1);
        QVERIFY(stored(token) != stored(cookies));
        Life restarted(path());
        QVERIFY(restarted.defaults.isAwaited(token));
        QVERIFY(!restarted.defaults.objectForKey(token).isValid());
        restarted.awaitKeys();
        for (const QString &key : secrets) {
            QCOMPARE(restarted.defaults.objectForKey(key), value);
            restarted.set(value, key);
        }
        QCOMPARE(file(), before);
    }

    void whatWasChangedReadsAsMissing()
    {
        seal({token, cookies});
        {
            QSettings file(path() + settingsFile, QSettings::IniFormat);
            const QVariant first = file.value(token);
            file.setValue(token, file.value(cookies));
            QByteArray changed = first.toByteArray();
            changed[changed.size() - 5] = changed[changed.size() - 5] == 'A' ? 'B' : 'A';
            file.setValue(cookies, changed);
        }
        Life restarted(path());
        restarted.awaitKeys();
        for (const QString &key : {token, cookies}) {
            expectWarning("the stored .* cannot be read");
            QVERIFY(!restarted.defaults.objectForKey(key).isValid());
        }
    }

    // What an earlier version left in the clear is sealed at once.
    void aKillInTheMiddleLosesNothing()
    {
        const QVariant list = QVariantList {QVariantMap {{u"Value"_s, marker}}};
        int sealedOnes = 0;
        for (int round = 0; round < 12; ++round) {
            init();
            const bool atTheEnd = round % 4 == 3;
            {
                QSettings earlier(path() + settingsFile, QSettings::IniFormat);
                earlier.setValue(token, marker);
                earlier.setValue(cookies, list);
            }
            QProcess writer;
            writer.start(QCoreApplication::applicationFilePath(), {u"--migrate"_s, path()});
            QVERIFY(writer.waitForReadyRead(patienceMs));
            if (atTheEnd)
                QVERIFY(writer.waitForReadyRead(patienceMs));
            else
                QVERIFY(!writer.waitForFinished(round * 2 + 1));
            writer.kill();
            QVERIFY(writer.waitForFinished(patienceMs));
            sealedOnes += isSealed(token) ? 1 : 0;
            QVERIFY(!atTheEnd || (!file().contains(marker.toUtf8()) && keyNames().size() == 1));
            Life restarted(path());
            restarted.awaitKeys();
            QCOMPARE(restarted.defaults.stringForKey(token), marker);
            QCOMPARE(restarted.defaults.objectForKey(cookies), list);
        }
        QVERIFY(sealedOnes >= 3);
    }

    void aLostKeyIsReplacedForWhatIsWritten()
    {
        seal({token, cookies});
        const QVariant lostCookies = stored(cookies);
        const QString lost = u"cn.vant.student.settings."_s + keyNames().values().first();
        KeyChainStore keychain(path(), path() + keychainFile);
        QVERIFY(answerOf<bool>([&](const auto &then) { keychain.deleteKeyData(lost, then); }));
        expectWarning("does not give out");
        {
            Life life(path());
            life.awaitKeys();
            QVERIFY(!life.defaults.isAwaited(token));
            QVERIFY(!life.defaults.objectForKey(token).isValid());
            life.set(marker + u"new"_s, token);
            TRY_VERIFY(isSealed(token));
        }
        QCOMPARE(stored(cookies), lostCookies);
        QCOMPARE(keyNames().size(), 2);
        expectWarning("does not give out");
        Life restarted(path());
        restarted.awaitKeys();
        QCOMPARE(restarted.defaults.stringForKey(token), marker + u"new"_s);
        restarted.set(marker, cookies);
        QCOMPARE(keyNames().size(), 1);
    }

    void aKeyringThatIsLateFindsAllAsItWas()
    {
        seal(secrets);
        const QVariant before = stored(token);
        const qsizetype keysBefore = keysInKeyring();
        m_bus.pauseKeyring();
        Life life(path());
        bool isReadable = false;
        life.defaults.whenReadable([&] { isReadable = true; });
        // Somebody else's session must not come back after this one, however this life ends.
        life.set(marker + u"new"_s, cookies);
        QCoreApplication::processEvents();
        QCOMPARE(life.defaults.stringForKey(cookies), marker + u"new"_s);
        QVERIFY(!stored(cookies).isValid());
        life.set(u""_s, password);
        QCOMPARE(stored(password), u""_s);
        life.set({}, password);
        QVERIFY(!stored(password).isValid());
        QVERIFY(life.defaults.isAwaited(token) && !life.defaults.objectForKey(token).isValid());
        QCOMPARE(stored(token), before);
        QVERIFY(!isReadable);

        m_bus.resumeKeyring();
        TRY_VERIFY(isReadable);
        QCOMPARE(life.defaults.stringForKey(token), marker);
        QVERIFY(isSealed(cookies) && !stored(password).isValid());
        QCOMPARE(keysInKeyring(), keysBefore);
        Life restarted(path());
        restarted.awaitKeys();
        QCOMPARE(restarted.defaults.stringForKey(cookies), marker + u"new"_s);
    }

    // The last one: the keyring does not come back.
    void withoutAKeyringTheKeyIsInAPrivateFile()
    {
        seal({token});
        m_bus.endKeyring();
        const QVariant unreadable = stored(token);
        expectWarning("does not give out");
        {
            Life life(path());
            life.awaitKeys();
            QVERIFY(!life.defaults.objectForKey(token).isValid());
            life.set(marker, cookies);
            TRY_VERIFY(isSealed(cookies));
        }
        QCOMPARE(stored(token), unreadable);
        constexpr auto others = QFile::Permissions(0x0077);
        QCOMPARE(QFile::permissions(path() + keychainFile) & others, QFile::Permissions());
        expectWarning("does not give out");
        Life restarted(path());
        restarted.awaitKeys();
        QCOMPARE(restarted.defaults.stringForKey(cookies), marker);
    }

private:
    //! Leaves the secrets there, as an earlier life.
    void seal(const QStringList &keys)
    {
        Life life(path());
        for (const QString &key : keys)
            life.set(marker, key);
        for (const QString &key : keys)
            TRY_VERIFY(isSealed(key));
    }
    static void expectWarning(const char *text)
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromLatin1(text)));
    }

    QString path() const { return m_folder->path(); }
    QByteArray file() const
    {
        QFile file(path() + settingsFile);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QVariant stored(const QString &key) const
    {
        return QSettings(path() + settingsFile, QSettings::IniFormat).value(key);
    }
    bool isSealed(const QString &key) const
    {
        return stored(key).typeId() == QMetaType::QByteArray;
    }
    //! The names of the keys that have sealed what lies in the file.
    QSet<QString> keyNames() const
    {
        QSet<QString> names;
        for (const QString &key : secrets) {
            if (isSealed(key))
                names << QString::fromLatin1(stored(key).toByteArray().split(':').value(1));
        }
        return names;
    }

    //! How many keys the keyring has.
    qsizetype keysInKeyring() const
    {
        // What is on its way comes before this.
        KeyChainStore keychain(path(), path() + keychainFile);
        answerOf<bool>([&](const auto &then) {
            keychain.save(u"last"_s, "last"_ba,
                [&keychain, then](bool) { keychain.deleteKeyData(u"last"_s, then); });
        });
        const QDBusInterface collection(u"org.freedesktop.secrets"_s,
            u"/org/freedesktop/secrets/aliases/default"_s, u"org.freedesktop.Secret.Collection"_s);
        return collection.property("Items").value<QList<QDBusObjectPath>>().size();
    }

    PrivateBus m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 3 && arguments[1] == u"--migrate")
        return migrate(arguments[2]);
    SealedDefaultsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SealedDefaultsTest.moc"
