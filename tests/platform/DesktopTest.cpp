#include "platform/DesktopUrlOpener.h"
#include "platform/FolderPhotoLibrary.h"
#include "platform/NotificationCenter.h"
#include "support/Patience.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

//! What the desktop and the notification centre give to the rooms above.
class DesktopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsAnAddressToItsProgram_data();
    void handsAnAddressToItsProgram();
    void keepsEveryPictureAndNothingElse();
    void aContextMayGoWhileBeingTold();

private:
    void write(const QString &name, const QByteArray &content);

    QTemporaryDir m_folder;
};

void DesktopTest::write(const QString &name, const QByteArray &content)
{
    QFile file(m_folder.filePath(name));
    QDir().mkpath(QFileInfo(file).path());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s", qPrintable(file.errorString()));
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void DesktopTest::handsAnAddressToItsProgram_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<bool>("can");
    QTest::newRow("number") << "tel:+86-10086"_ba << true;
    QTest::newRow("escapes, capitals") << "MQQ://im/chat?t=%E4%BD%A0%20%26"_ba << true;
    QTest::newRow("what a shell would take") << "mqq://x?a=$(id);`id`&b='c'"_ba << true;
    QTest::newRow("nobody's") << "telprompt:10086"_ba << false;
    QTest::newRow("of a program that is gone") << "sms:10086"_ba << false;
}

//! On a desktop whose only program takes "tel" and "mqq" addresses and writes down what it was
//! given.
void DesktopTest::handsAnAddressToItsProgram()
{
    QFETCH(QByteArray, address);
    QFETCH(bool, can);
    for (const char *folder :
        {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
        qputenv(folder, m_folder.path().toUtf8());
    QFile taken(m_folder.filePath(u"taken"_s));
    taken.remove();
    const QByteArray path = taken.fileName().toUtf8();
    // Written whole or not at all, for the test looks while it is being written.
    write(u"dial.sh"_s,
        "#!/bin/sh\nprintf %s \"$1\" > " + path + ".part\nmv " + path + ".part " + path + "\n");
    write(u"applications/dialler.desktop"_s,
        "[Desktop Entry]\nType=Application\nName=Dialler\nExec=" + m_folder.path().toUtf8()
            + "/dial.sh %u\nMimeType=x-scheme-handler/tel;x-scheme-handler/mqq;\n");
    write(u"mimeapps.list"_s,
        "[Default Applications]\nx-scheme-handler/tel=dialler.desktop\n"
        "x-scheme-handler/mqq=dialler.desktop\nx-scheme-handler/sms=removed.desktop\n");

    DesktopUrlOpener opener;
    const QUrl url = QUrl::fromEncoded(address);
    QCOMPARE(opener.canOpenURL(url), can);
    if (!can)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"no program took the address"_s));
    QCOMPARE(opener.openURL(url), can);
    TRY_COMPARE(taken.exists(), can);
    if (can && taken.open(QIODevice::ReadOnly))
        QCOMPARE(taken.readAll(), url.toEncoded());
}

void DesktopTest::keepsEveryPictureAndNothingElse()
{
    QBuffer png;
    QVERIFY(png.open(QIODevice::WriteOnly));
    QVERIFY(QImage(40, 30, QImage::Format_RGB32).save(&png, "PNG"));
    QList<QByteArray> pictures(60, png.data());
    pictures << "<html>404</html>"_ba << png.data().first(40);
    const QDir album(m_folder.filePath(u"album"_s));
    FolderPhotoLibrary library(album.path());
    QStringList errors;
    for (const QByteArray &data : std::as_const(pictures))
        library.writeImageToSavedPhotosAlbum(data, [&](const QString &text) { errors << text; });
    QCOMPARE(errors, {});

    TRY_COMPARE(errors.size(), 62);
    QCOMPARE(errors.count(QString()), 60);
    const QStringList files = album.entryList({u"*.png"_s}, QDir::Files);
    QCOMPARE(files.size(), 60);
    for (const QString &name : files) {
        QFile file(album.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), png.data());
    }
}

void DesktopTest::aContextMayGoWhileBeingTold()
{
    NotificationCenter center;
    auto first = std::make_unique<QObject>();
    auto second = std::make_unique<QObject>();
    QStringList told;
    const auto observe = [&](const QString &name, QObject *context, const QString &who) {
        center.addObserver(name, context, [&, who](const QVariant &object) {
            told << who + object.toString();
            first.reset();
            second.reset();
        });
    };
    observe(u"name"_s, first.get(), u"first "_s);
    observe(u"name"_s, second.get(), u"second "_s);
    observe(u"Name"_s, this, u"of another name "_s);
    observe(u"name"_s, this, u"third "_s);
    center.postNotificationName(u"name"_s, u"x"_s);
    center.postNotificationName(u"name"_s, u"y"_s);
    QCOMPARE(told, (QStringList {u"first x"_s, u"third x"_s, u"third y"_s}));
}

QTEST_GUILESS_MAIN(DesktopTest)
#include "DesktopTest.moc"
