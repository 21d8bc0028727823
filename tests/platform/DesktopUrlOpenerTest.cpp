#include "platform/DesktopUrlOpener.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

//! On a desktop whose only program takes "tel" and "mqq" addresses and writes down what it was given.
class DesktopUrlOpenerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void knowsWhatCanBeOpened_data();
    void knowsWhatCanBeOpened();
    void handsTheAddressOver_data();
    void handsTheAddressOver();
    void saysWhenNobodyTakesIt();

private:
    void write(const QString &name, const QByteArray &content, bool executable = false);
    QByteArray taken() const;

    QTemporaryDir m_folder;
    DesktopUrlOpener m_opener;
};

void DesktopUrlOpenerTest::write(const QString &name, const QByteArray &content, bool executable)
{
    QFile file(m_folder.filePath(name));
    QDir().mkpath(QFileInfo(file).path());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s", qPrintable(file.errorString()));
    if (executable)
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QByteArray DesktopUrlOpenerTest::taken() const
{
    QFile file(m_folder.filePath(u"taken"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void DesktopUrlOpenerTest::initTestCase()
{
    for (const char *folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
        qputenv(folder, m_folder.path().toUtf8());
    const QByteArray taken = m_folder.filePath(u"taken"_s).toUtf8();
    // Written whole or not at all, for the test looks while it is being written.
    write(u"dial.sh"_s,
        "#!/bin/sh\nprintf %s \"$1\" > " + taken + ".part\nmv " + taken + ".part " + taken + "\n",
        true);
    write(u"applications/dialler.desktop"_s,
        "[Desktop Entry]\nType=Application\nName=Dialler\nExec="
            + m_folder.filePath(u"dial.sh"_s).toUtf8()
            + " %u\nMimeType=x-scheme-handler/tel;x-scheme-handler/mqq;\n");
    write(u"mimeapps.list"_s,
        "[Default Applications]\nx-scheme-handler/tel=dialler.desktop\n"
        "x-scheme-handler/mqq=dialler.desktop\nx-scheme-handler/sms=removed.desktop\n");
}

void DesktopUrlOpenerTest::knowsWhatCanBeOpened_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<bool>("can");
    QTest::newRow("handled") << QUrl(u"tel:10086"_s) << true;
    QTest::newRow("handled, in capitals") << QUrl(u"MQQ://im/chat"_s) << true;
    QTest::newRow("nobody's") << QUrl(u"telprompt:10086"_s) << false;
    QTest::newRow("of a program that is gone") << QUrl(u"sms:10086"_s) << false;
    QTest::newRow("no scheme") << QUrl(u"index.html"_s) << false;
    QTest::newRow("empty") << QUrl() << false;
}

void DesktopUrlOpenerTest::knowsWhatCanBeOpened()
{
    QFETCH(QUrl, url);
    QTEST(m_opener.canOpenURL(url), "can");
}

void DesktopUrlOpenerTest::handsTheAddressOver_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("number") << "tel:+86-10086"_ba;
    QTest::newRow("query and escapes")
        << "mqq://im/chat?chat_type=wpa&uin=800012345&t=%E4%BD%A0%20%26"_ba;
    QTest::newRow("what a shell would take") << "mqq://x?a=$(id);`id`&b='c'"_ba;
}

void DesktopUrlOpenerTest::handsTheAddressOver()
{
    QFETCH(QByteArray, address);
    QFile::remove(m_folder.filePath(u"taken"_s));
    QVERIFY(m_opener.openURL(QUrl::fromEncoded(address)));
    QTRY_COMPARE(taken(), QUrl::fromEncoded(address).toEncoded());
}

void DesktopUrlOpenerTest::saysWhenNobodyTakesIt()
{
    for (const auto &address : {u"telprompt:1"_s, u"sms:1"_s}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"no program took the address"_s));
        QVERIFY(!m_opener.openURL(QUrl(address)));
    }
}

QTEST_GUILESS_MAIN(DesktopUrlOpenerTest)
#include "DesktopUrlOpenerTest.moc"
