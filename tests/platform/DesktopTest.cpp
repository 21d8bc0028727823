#include "platform/desktop/DesktopUrlOpener.h"
#include "platform/media/FolderPhotoLibrary.h"
#include "platform/time/NotificationCenter.h"
#include "support/Patience.h"

#include <QDir>
#include <QThread>

using namespace Qt::StringLiterals;

//! What the desktop and the notification centre give to the rooms above.
class DesktopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    //! On a desktop whose only program takes "tel" and "mqq" addresses and writes down what it was
    //! given.
    void handsAnAddressToItsProgram()
    {
        for (const char *folder :
            {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
            qputenv(folder, m_folder.path().toUtf8());
        QFile taken(m_folder.filePath(u"taken"_s));
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

        const std::pair<QByteArray, bool> rows[] {{"tel:+86-10086", true},
            {"MQQ://im/chat?t=%E4%BD%A0%20%26", true}, {"mqq://x?a=$(id);`id`&b='c'", true},
            {"telprompt:10086", false}, {"sms:10086", false}};
        for (const auto &[address, can] : rows) {
            DesktopUrlOpener opener;
            const QUrl url = QUrl::fromEncoded(address);
            QCOMPARE(opener.canOpenURL(url), can);
            if (!can)
                QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"no program took"_s));
            QCOMPARE(opener.openURL(url), can);
            TRY_COMPARE(taken.exists(), can);
            if (can && taken.open(QIODevice::ReadOnly))
                QCOMPARE(taken.readAll(), url.toEncoded());
            taken.remove();
        }
    }

    void findsPhotosOrClips()
    {
        const QString album = m_folder.filePath(u"album"_s);
        // Newest first; what is not in the answer must not be found.
        const QStringList made {u"Videos/newest.HEIC"_s, u"album/trip.mov"_s,
            u"album/camera/1.jpg"_s, u"Videos/a.mp4"_s, u"album/old.png"_s,
            u"album/.hidden/2.jpg"_s, u"album/.3.jpg"_s, u"album/Cache/4.jpg"_s,
            u"album/tagged/5.jpg"_s, u"album/notes.txt"_s, u"album/a/b/c/d/e/f/g/h/i/deep.jpg"_s,
            u"elsewhere/6.jpg"_s};
        for (qsizetype age = 0; age < made.size(); ++age) {
            write(made[age], "12345");
            QFile file(m_folder.filePath(made[age]));
            QVERIFY(file.open(QIODevice::ReadWrite));
            file.setFileTime(
                QDateTime::currentDateTime().addDays(-age), QFile::FileModificationTime);
        }
        QVERIFY(QFile(album + u"/tagged/CACHEDIR.TAG"_s).open(QIODevice::WriteOnly));
        QVERIFY(QFile::link(album, album + u"/camera/back"_s));
        QVERIFY(QFile::link(album + u"/old.png"_s, album + u"/again.png"_s));

        FolderPhotoLibrary library(
            album, {m_folder.filePath(u"Videos"_s), album, m_folder.filePath(u"missing"_s)});
        using Type = PhotoAsset::MediaType;
        for (const Type mediaType : {Type::Image, Type::Video}) {
            const auto found = answerOf<QList<PhotoAsset>>([&](const auto &then) {
                library.fetchAssets(mediaType, [then](const auto &assets) {
                    QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
                    then(assets);
                });
            });
            QStringList names;
            for (const PhotoAsset &asset : found) {
                names << QFileInfo(asset.filePath).fileName();
                QCOMPARE(asset.size, 5);
                QCOMPARE(asset.isVideo, mediaType == Type::Video);
            }
            QCOMPARE(names,
                mediaType == Type::Image
                    ? (QStringList {u"newest.HEIC"_s, u"1.jpg"_s, u"old.png"_s})
                    : (QStringList {u"trip.mov"_s, u"a.mp4"_s}));
        }
    }

    void aContextMayGoWhileBeingTold()
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

private:
    void write(const QString &name, const QByteArray &content)
    {
        QFile file(m_folder.filePath(name));
        QDir().mkpath(QFileInfo(file).path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s", qPrintable(file.errorString()));
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(DesktopTest)
#include "DesktopTest.moc"
