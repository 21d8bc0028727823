#include "model/DeviceIdentifier.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class DeviceIdentifierTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isMadeOnceAndKept();
    void keepsWhatIsStored();
    void anEmptyItemIsNone();
    void editionsHaveTheirOwn();
    void tellsThoseWhoWait();

private:
    void store(const QByteArray &data);
    QString prepared(const QString &key = u"cn.vant.student"_s);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<KeyChainStore> m_keychain;
};

void DeviceIdentifierTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_keychain = std::make_unique<KeyChainStore>(
        m_folder->path(), m_folder->filePath(u"keychain.ini"_s));
}

void DeviceIdentifierTest::store(const QByteArray &data)
{
    bool stored = false;
    m_keychain->save(u"cn.vant.student"_s, data, [&](bool done) { stored = done; });
    QTRY_VERIFY(stored);
}

QString DeviceIdentifierTest::prepared(const QString &key)
{
    DeviceIdentifier identifier(m_keychain.get(), key);
    identifier.prepare();
    if (!QTest::qWaitFor([&] { return !identifier.uuid().isNull(); }))
        qFatal("no identifier");
    return identifier.uuid();
}

void DeviceIdentifierTest::isMadeOnceAndKept()
{
    const QString made = prepared();
    static const QRegularExpression form(u"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"_s);
    QVERIFY2(form.match(made).hasMatch(), qPrintable(made));
    QTRY_COMPARE(prepared(), made);
}

void DeviceIdentifierTest::keepsWhatIsStored()
{
    store("of an earlier version");
    QCOMPARE(prepared(), u"of an earlier version"_s);
}

void DeviceIdentifierTest::anEmptyItemIsNone()
{
    store("");
    const QString made = prepared();
    QCOMPARE(made.size(), 36);
    QTRY_COMPARE(prepared(), made);
}

void DeviceIdentifierTest::editionsHaveTheirOwn()
{
    QVERIFY(prepared(u"cn.vant.student"_s) != prepared(u"cn.vant.patriarch"_s));
}

void DeviceIdentifierTest::tellsThoseWhoWait()
{
    DeviceIdentifier identifier(m_keychain.get(), u"cn.vant.student"_s);
    QStringList told;
    const auto note = [&](const QString &uuid) { told << uuid; };
    identifier.whenReady(note);
    // One who asks for more while being told.
    identifier.whenReady([&](const QString &) { identifier.whenReady(note); });
    identifier.prepare();
    QCOMPARE(told, {});
    QVERIFY(identifier.uuid().isNull());

    QTRY_COMPARE(told.size(), 2);
    identifier.whenReady(note);
    QCOMPARE(told, QStringList(3, identifier.uuid()));
}

QTEST_GUILESS_MAIN(DeviceIdentifierTest)
#include "DeviceIdentifierTest.moc"
