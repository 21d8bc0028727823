#include "platform/storage/KeyChainStore.h"

#include "PrivateBus.h"
#include "support/Patience.h"

#include <QDir>
#include <QSettings>

using namespace Qt::StringLiterals;

const QString key = QStringLiteral("cn.vant.student");

//! On a session bus with a keyring. Where there is no bus the device identifier's test has the
//! keychain.
class KeyChainStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsItems()
    {
        KeyChainStore first(u"/home/a/profile"_s, m_file);
        KeyChainStore second(u"/home/b/profile"_s, m_file);
        for (const QByteArray &data : {"old"_ba, QByteArray("\0\xff\n\x80%", 5), ""_ba}) {
            QVERIFY(save(first, data));
            KeyChainStore restarted(u"/home/a/profile"_s, m_file);
            QCOMPARE(load(restarted), Data(data));
        }
        QCOMPARE(load(second), Data());
        QVERIFY(save(second, "B"));
        remove(first);
        remove(first);
        QCOMPARE(load(first), Data());
        QCOMPARE(load(second), Data("B"));
        QVERIFY(!QFile::exists(m_file));
    }

    void aDeadStoreAnswersNobody()
    {
        bool answered = false;
        KeyChainStore({}, m_file).load(key, [&](const Data &) { answered = true; });
        KeyChainStore other({}, m_file);
        load(other);
        QVERIFY(!answered);
    }

    void aServiceThatIsNewTakesWhatTheFileHolds()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"keychain.ini"_s);
        QSettings(file, QSettings::IniFormat).setValue(key, "of the file"_ba);
        KeyChainStore store(u"/home/c/profile"_s, file);
        QCOMPARE(load(store), Data("of the file"));
        TRY_VERIFY(!QSettings(file, QSettings::IniFormat).contains(key));
        KeyChainStore withoutTheFile(u"/home/c/profile"_s, m_file);
        QCOMPARE(load(withoutTheFile), Data("of the file"));
    }

    // The last one of the keychain: the service does not come back.
    void withoutAServiceItemsAreInAPrivateFile()
    {
        m_bus.endKeyring();
        KeyChainStore store({}, m_file);
        QVERIFY(save(store, "in the file"));
        KeyChainStore restarted({}, m_file);
        QCOMPARE(load(restarted), Data("in the file"));
        for (const QString &path : {m_file, QFileInfo(m_file).path()})
            QCOMPARE(QFile::permissions(path) & QFile::Permissions(0x0077), QFile::Permissions());
        remove(store);
        QCOMPARE(load(restarted), Data());
    }

private:
    using Data = std::optional<QByteArray>;

    static Data load(KeyChainStore &store)
    {
        return answerOf<Data>([&](const auto &then) { store.load(key, then); });
    }
    static bool save(KeyChainStore &store, const QByteArray &data)
    {
        return answerOf<bool>([&](const auto &then) { store.save(key, data, then); });
    }
    static void remove(KeyChainStore &store)
    {
        answerOf<bool>([&](const auto &then) { store.deleteKeyData(key, then); });
    }

    PrivateBus m_bus;
    const QTemporaryDir m_folder;
    const QString m_file = m_folder.filePath(u"data/keychain.ini"_s);
};

QTEST_GUILESS_MAIN(KeyChainStoreTest)
#include "KeyChainStoreTest.moc"
