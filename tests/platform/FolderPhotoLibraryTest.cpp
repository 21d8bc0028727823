#include "platform/FolderPhotoLibrary.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

QByteArray picture(const char *format)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(QColor(61, 209, 135));
    QBuffer encoded;
    if (!encoded.open(QIODevice::WriteOnly) || !image.save(&encoded, format))
        qFatal("no %s can be made", format);
    return encoded.data();
}

}

class FolderPhotoLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsThePictureAsItIs_data();
    void keepsThePictureAsItIs();
    void refusesWhatIsNoPicture_data();
    void refusesWhatIsNoPicture();
    void picturesSavedTogetherAllStay();
    void reportsAFolderThatCannotBe();
    void aDeadLibraryAnswersNobody();

private:
    QStringList files() const { return QDir(album()).entryList(QDir::Files); }
    QString album() const { return m_folder->filePath(u"album"_s); }
    //! The error, null when it was saved.
    static QString save(FolderPhotoLibrary &library, const QByteArray &data);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void FolderPhotoLibraryTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

QString FolderPhotoLibraryTest::save(FolderPhotoLibrary &library, const QByteArray &data)
{
    std::optional<QString> result;
    library.writeImageToSavedPhotosAlbum(data, [&](const QString &error) {
        if (QThread::currentThread() != qApp->thread())
            qFatal("not on the main thread");
        result = error;
    });
    if (result)
        qFatal("answered from inside the call");
    if (!QTest::qWaitFor([&] { return result.has_value(); }))
        qFatal("no answer");
    return *result;
}

void FolderPhotoLibraryTest::keepsThePictureAsItIs_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("suffix");
    QTest::newRow("PNG") << picture("PNG") << u".png"_s;
    QTest::newRow("JPEG") << picture("JPEG") << u".jpg"_s;
}

void FolderPhotoLibraryTest::keepsThePictureAsItIs()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, suffix);
    FolderPhotoLibrary library(album());
    QCOMPARE(save(library, data), QString());
    QCOMPARE(files().size(), 1);
    QVERIFY2(files().constFirst().endsWith(suffix), qPrintable(files().constFirst()));
    QFile file(QDir(album()).filePath(files().constFirst()));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), data);
}

void FolderPhotoLibraryTest::refusesWhatIsNoPicture_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("a page") << "<html>404</html>"_ba;
    QTest::newRow("nothing") << ""_ba;
    QTest::newRow("cut off") << picture("PNG").first(40);
}

void FolderPhotoLibraryTest::refusesWhatIsNoPicture()
{
    QFETCH(QByteArray, data);
    FolderPhotoLibrary library(album());
    QVERIFY(!save(library, data).isEmpty());
    QCOMPARE(files(), {});
}

void FolderPhotoLibraryTest::picturesSavedTogetherAllStay()
{
    constexpr int count = 60;
    const QByteArray data = picture("PNG");
    FolderPhotoLibrary library(album());
    int saved = 0;
    for (int i = 0; i < count; ++i)
        library.writeImageToSavedPhotosAlbum(
            data, [&](const QString &error) { saved += int(error.isNull()); });
    QTRY_COMPARE(saved, count);
    QCOMPARE(files().size(), count);
}

void FolderPhotoLibraryTest::reportsAFolderThatCannotBe()
{
    QFile notAFolder(album());
    QVERIFY(notAFolder.open(QIODevice::WriteOnly));
    FolderPhotoLibrary library(album());
    QVERIFY(!save(library, picture("PNG")).isEmpty());
}

void FolderPhotoLibraryTest::aDeadLibraryAnswersNobody()
{
    bool answered = false;
    {
        FolderPhotoLibrary library(album());
        library.writeImageToSavedPhotosAlbum(
            picture("PNG"), [&](const QString &) { answered = true; });
    }
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    QVERIFY(!answered);
}

QTEST_GUILESS_MAIN(FolderPhotoLibraryTest)
#include "FolderPhotoLibraryTest.moc"
