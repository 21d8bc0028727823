#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QString writeForEver = QStringLiteral("--write-for-ever");

//! Writes ever new pairs of equal numbers until it is killed, and a line for each.
int keepWriting(const QString &file)
{
    UserDefaults defaults(file);
    for (int n = defaults.objectForKey(u"one"_s).toInt() + 1;; ++n) {
        defaults.setObject(n, u"one"_s);
        defaults.setObject(QString(n % 100, u'学'), u"filling"_s);
        defaults.setObject(n, u"two"_s);
        if (!defaults.synchronize())
            return 1;
        std::puts("written");
        std::fflush(stdout);
    }
}

}

class UserDefaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void survivesARestart_data();
    void survivesARestart();
    void aMissingKeyReadsAsNothing();
    void nilRemoves();
    void theFileIsPrivate();
    void twoOfOneFileSeeTheSame();
    void aKillLeavesTheOldOrTheNewPair();
    void reportsADiskThatRefuses();

private:
    QString file() const { return m_folder->filePath(u"state/settings.ini"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void UserDefaultsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void UserDefaultsTest::survivesARestart_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(u"厦门一中"_s);
    QTest::newRow("empty text") << QVariant(u""_s);
    QTest::newRow("what an INI file means something by") << QVariant(u" a=b;\"c\",\\n%20@Invalid() "_s);
    QTest::newRow("lines") << QVariant(u"a\r\nb\tc"_s);
    QTest::newRow("begins with @") << QVariant(u"@Variant(x)"_s);
    QTest::newRow("a list of maps")
        << QVariant(QVariantList {QVariantMap {{u"Name"_s, u"mo"_s}, {u"Secure"_s, true}},
               QVariantMap {{u"Expires"_s, qint64(4102444800000)}}});
    QTest::newRow("an empty list") << QVariant(QVariantList {});
}

void UserDefaultsTest::survivesARestart()
{
    QFETCH(QVariant, value);
    {
        UserDefaults defaults(file());
        defaults.setObject(value, u"key"_s);
        QVERIFY(defaults.synchronize());
    }
    const QVariant read = UserDefaults(file()).objectForKey(u"key"_s);
    QVERIFY(read.isValid());
    if (value.metaType().id() == QMetaType::QString)
        QCOMPARE(UserDefaults(file()).stringForKey(u"key"_s), value.toString());
    else
        QCOMPARE(read.toList(), value.toList());
}

void UserDefaultsTest::aMissingKeyReadsAsNothing()
{
    const UserDefaults defaults(file());
    QVERIFY(!defaults.objectForKey(u"key"_s).isValid());
    QVERIFY(defaults.stringForKey(u"key"_s).isNull());
    QVERIFY(!defaults.boolForKey(u"key"_s));
}

void UserDefaultsTest::nilRemoves()
{
    UserDefaults defaults(file());
    for (const QVariant &nil : {QVariant(), QVariant(QString())}) {
        defaults.setObject(u"value"_s, u"key"_s);
        defaults.setObject(nil, u"key"_s);
        defaults.synchronize();
        QVERIFY(!UserDefaults(file()).objectForKey(u"key"_s).isValid());
    }
}

void UserDefaultsTest::theFileIsPrivate()
{
    // Whatever the user's ordinary mask is.
    const mode_t before = ::umask(S_IWGRP | S_IWOTH);
    UserDefaults defaults(file());
    for (const auto &value : {u"first"_s, u"second"_s}) {
        defaults.setObject(value, u"passwordForST"_s);
        defaults.synchronize();
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QCOMPARE(QFile::permissions(file()) & others, QFile::Permissions());
    }
    ::umask(before);
}

void UserDefaultsTest::twoOfOneFileSeeTheSame()
{
    UserDefaults writer(file());
    UserDefaults reader(file());
    writer.setObject(u"new"_s, u"key"_s);
    writer.synchronize();
    QVERIFY(reader.synchronize());
    QCOMPARE(reader.stringForKey(u"key"_s), u"new"_s);
}

void UserDefaultsTest::aKillLeavesTheOldOrTheNewPair()
{
    int last = 0;
    for (int round = 0; round < 20; ++round) {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(), {writeForEver, file()});
        for (int writes = 0; writes <= round % 5; ++writes)
            QVERIFY2(writer.waitForReadyRead(5'000), "it cannot write after the last kill");
        writer.kill();
        QVERIFY(writer.waitForFinished());

        const UserDefaults defaults(file());
        const int one = defaults.objectForKey(u"one"_s).toInt();
        QCOMPARE(defaults.objectForKey(u"two"_s).toInt(), one);
        QCOMPARE(defaults.stringForKey(u"filling"_s).size(), one % 100);
        QVERIFY2(one >= last, qPrintable(u"%1 after %2"_s.arg(one).arg(last)));
        last = one;
    }
    QVERIFY2(last > 20, qPrintable(QString::number(last)));
}

void UserDefaultsTest::reportsADiskThatRefuses()
{
    QFile notAFolder(m_folder->filePath(u"state"_s));
    QVERIFY(notAFolder.open(QIODevice::WriteOnly));
    UserDefaults defaults(file());
    defaults.setObject(u"value"_s, u"key"_s);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"settings could not be written"_s));
    QVERIFY(!defaults.synchronize());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 3 && arguments[1] == writeForEver)
        return keepWriting(arguments[2]);
    UserDefaultsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "UserDefaultsTest.moc"
