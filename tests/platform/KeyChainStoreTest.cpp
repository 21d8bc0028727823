#include "platform/KeyChainStore.h"

#include "PrivateBus.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

//! The test runs twice: with a keyring service (and last without it), and in a process that has no bus at all.
class KeyChainStoreTest : public QObject
{
    Q_OBJECT

public:
    explicit KeyChainStoreTest(PrivateBus *bus)
        : m_bus(bus)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void keepsAnItem_data();
    void keepsAnItem();
    void replacesAnItem();
    void deletesAnItem();
    void aMissingItemIsNothing();
    void twoProfilesNeverMeet();
    void answersLaterOnly();
    void aDeadStoreAnswersNobody();
    void withoutAServiceItemsAreInAPrivateFile();

private:
    using Data = std::optional<QByteArray>;

    QString fallbackFile(const QString &profile = {}) const
    {
        return m_folder->filePath(profile + u"keychain.ini"_s);
    }
    static Data load(KeyChainStore &store, const QString &key);
    static bool save(KeyChainStore &store, const QString &key, const QByteArray &data);
    static void remove(KeyChainStore &store, const QString &key);

    PrivateBus *m_bus;
    bool m_fileHoldsItems = false;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<KeyChainStore> m_store;
};

KeyChainStoreTest::Data KeyChainStoreTest::load(KeyChainStore &store, const QString &key)
{
    std::optional<Data> loaded;
    store.load(key, [&](const Data &data) { loaded = data; });
    if (!QTest::qWaitFor([&] { return loaded.has_value(); }))
        qFatal("the keychain did not answer");
    return *loaded;
}

bool KeyChainStoreTest::save(KeyChainStore &store, const QString &key, const QByteArray &data)
{
    std::optional<bool> saved;
    store.save(key, data, [&](bool stored) { saved = stored; });
    if (!QTest::qWaitFor([&] { return saved.has_value(); }))
        qFatal("the keychain did not answer");
    return *saved;
}

void KeyChainStoreTest::remove(KeyChainStore &store, const QString &key)
{
    bool done = false;
    store.deleteKeyData(key, [&](bool) { done = true; });
    if (!QTest::qWaitFor([&] { return done; }))
        qFatal("the keychain did not answer");
}

void KeyChainStoreTest::initTestCase()
{
    if (m_bus)
        QVERIFY(m_bus->startKeyring());
    m_fileHoldsItems = !m_bus;
}

void KeyChainStoreTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_store = std::make_unique<KeyChainStore>(QString(), fallbackFile());
}

void KeyChainStoreTest::keepsAnItem_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("an identifier") << "0C1B8E5A-7D0F-4B5E-9B1E-2B5B6C7D8E9F"_ba;
    QTest::newRow("bytes") << QByteArray("\0\xff\n\x80%", 5);
    QTest::newRow("empty") << ""_ba;
}

void KeyChainStoreTest::keepsAnItem()
{
    QFETCH(QByteArray, data);
    QVERIFY(save(*m_store, u"cn.vant.kept"_s, data));
    KeyChainStore restarted({}, fallbackFile());
    const Data loaded = load(restarted, u"cn.vant.kept"_s);
    QVERIFY(loaded.has_value());
    QCOMPARE(*loaded, data);
    QCOMPARE(QFile::exists(fallbackFile()), m_fileHoldsItems);
}

void KeyChainStoreTest::replacesAnItem()
{
    QVERIFY(save(*m_store, u"cn.vant.replaced"_s, "old"));
    QVERIFY(save(*m_store, u"cn.vant.replaced"_s, "new"));
    QCOMPARE(load(*m_store, u"cn.vant.replaced"_s), Data("new"));
}

void KeyChainStoreTest::deletesAnItem()
{
    QVERIFY(save(*m_store, u"cn.vant.deleted"_s, "x"));
    QVERIFY(save(*m_store, u"cn.vant.neighbour"_s, "y"));
    remove(*m_store, u"cn.vant.deleted"_s);
    QCOMPARE(load(*m_store, u"cn.vant.deleted"_s), Data());
    QCOMPARE(load(*m_store, u"cn.vant.neighbour"_s), Data("y"));
    remove(*m_store, u"cn.vant.deleted"_s);
}

void KeyChainStoreTest::aMissingItemIsNothing()
{
    QCOMPARE(load(*m_store, u"cn.vant.never.saved"_s), Data());
}

void KeyChainStoreTest::twoProfilesNeverMeet()
{
    KeyChainStore first(u"/home/a/profile"_s, fallbackFile(u"first"_s));
    KeyChainStore second(u"/home/b/profile"_s, fallbackFile(u"second"_s));
    QVERIFY(save(first, u"cn.vant.student"_s, "A"));
    QCOMPARE(load(second, u"cn.vant.student"_s), Data());
    QVERIFY(save(second, u"cn.vant.student"_s, "B"));
    QCOMPARE(load(first, u"cn.vant.student"_s), Data("A"));
    QCOMPARE(load(*m_store, u"cn.vant.student"_s), Data());
}

void KeyChainStoreTest::answersLaterOnly()
{
    int answers = 0;
    m_store->save(u"cn.vant.later"_s, "x", [&](bool) { ++answers; });
    QCOMPARE(answers, 0);
    QTRY_COMPARE(answers, 1);
    m_store->load(u"cn.vant.later"_s, [&](const Data &) { ++answers; });
    QCOMPARE(answers, 1);
    QTRY_COMPARE(answers, 2);
    m_store->deleteKeyData(u"cn.vant.later"_s, [&](bool) { ++answers; });
    QCOMPARE(answers, 2);
    QTRY_COMPARE(answers, 3);
}

void KeyChainStoreTest::aDeadStoreAnswersNobody()
{
    bool answered = false;
    m_store->load(u"cn.vant.student"_s, [&](const Data &) { answered = true; });
    m_store.reset();
    KeyChainStore other({}, fallbackFile());
    load(other, u"cn.vant.student"_s);
    QVERIFY(!answered);
}

// The last one: the service does not come back.
void KeyChainStoreTest::withoutAServiceItemsAreInAPrivateFile()
{
    if (m_bus)
        m_bus->endKeyring();
    const QString inFolder = m_folder->filePath(u"data/keychain.ini"_s);
    KeyChainStore store({}, inFolder);
    QVERIFY(save(store, u"cn.vant.student"_s, "in the file"));
    KeyChainStore restarted({}, inFolder);
    QCOMPARE(load(restarted, u"cn.vant.student"_s), Data("in the file"));

    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
        | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFile::permissions(inFolder) & others, QFile::Permissions());
    QCOMPARE(QFile::permissions(m_folder->filePath(u"data"_s)) & others, QFile::Permissions());
    remove(store, u"cn.vant.student"_s);
    QCOMPARE(load(restarted, u"cn.vant.student"_s), Data());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const bool withoutBus = argc > 1 && QByteArray(argv[1]) == "--without-bus";
    std::unique_ptr<PrivateBus> bus;
    if (withoutBus) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        std::swap(argv[0], argv[1]);
        --argc, ++argv;
    } else {
        bus = std::make_unique<PrivateBus>();
    }
    KeyChainStoreTest test(bus.get());
    return QTest::qExec(&test, argc, argv);
}

#include "KeyChainStoreTest.moc"
