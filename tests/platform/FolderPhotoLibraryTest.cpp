#include "platform/FolderPhotoLibrary.h"

#include "support/Patience.h"

#include <QDir>
#include <QTemporaryDir>
#include <QThread>

using namespace Qt::StringLiterals;

//! The library as a source of photos and clips.
class FolderPhotoLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsPhotosOrClips_data();
    void findsPhotosOrClips();
};

void FolderPhotoLibraryTest::findsPhotosOrClips_data()
{
    QTest::addColumn<PhotoAsset::MediaType>("mediaType");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("photos") << PhotoAsset::MediaType::Image
                            << QStringList {u"newest.HEIC"_s, u"1.jpg"_s, u"old.png"_s};
    QTest::newRow("clips") << PhotoAsset::MediaType::Video
                           << QStringList {u"trip.mov"_s, u"a.mp4"_s};
}

void FolderPhotoLibraryTest::findsPhotosOrClips()
{
    QFETCH(PhotoAsset::MediaType, mediaType);
    QFETCH(QStringList, names);
    const QTemporaryDir folder;
    const QString album = folder.filePath(u"album"_s);
    // Newest first; what is not in the answer must not be found.
    const QStringList made {u"Videos/newest.HEIC"_s, u"album/trip.mov"_s, u"album/camera/1.jpg"_s,
        u"Videos/a.mp4"_s, u"album/old.png"_s, u"album/.hidden/2.jpg"_s, u"album/.3.jpg"_s,
        u"album/Cache/4.jpg"_s, u"album/tagged/5.jpg"_s, u"album/notes.txt"_s,
        u"album/a/b/c/d/e/f/g/h/i/deep.jpg"_s, u"elsewhere/6.jpg"_s};
    for (qsizetype age = 0; age < made.size(); ++age) {
        QFile file(folder.filePath(made[age]));
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("12345") == 5 && file.flush());
        file.setFileTime(QDateTime::currentDateTime().addDays(-age), QFile::FileModificationTime);
    }
    QVERIFY(QFile(album + u"/tagged/CACHEDIR.TAG"_s).open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(album, album + u"/camera/back"_s));
    QVERIFY(QFile::link(album + u"/old.png"_s, album + u"/again.png"_s));

    FolderPhotoLibrary library(
        album, {folder.filePath(u"Videos"_s), album, folder.filePath(u"missing"_s)});
    std::optional<QList<PhotoAsset>> found;
    library.fetchAssets(mediaType, [&](const auto &assets) {
        QVERIFY(QThread::currentThread() == qApp->thread());
        found = assets;
    });
    QVERIFY(!found);
    TRY_VERIFY(found);
    QStringList foundNames;
    for (const PhotoAsset &asset : std::as_const(*found)) {
        foundNames << QFileInfo(asset.filePath).fileName();
        QCOMPARE(asset.size, 5);
        QCOMPARE(asset.isVideo, mediaType == PhotoAsset::MediaType::Video);
    }
    QCOMPARE(foundNames, names);
}

QTEST_GUILESS_MAIN(FolderPhotoLibraryTest)
#include "FolderPhotoLibraryTest.moc"
