#include "upload/SampleMedia.h"
#include "upload/preparation/MediaCodecs.h"
#include "upload/preparation/PhotoPreparation.h"
#include "upload/preparation/Thumbnail.h"
#include "upload/preparation/VideoExport.h"

#include "support/Patience.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <libheif/heif.h>

#include <cstring>
#include <optional>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace SampleMedia;

namespace {

// As of a phone that was held upright: a property of the file has it shown turned clockwise by a
// quarter. The tool that makes other HEIC photos does not write it.
void writeTurnedHeic(const QString &path, const QSize &size)
{
    writePhoto(path, "PNG", size);
    const QImage picture = QImage(path, "PNG").convertToFormat(QImage::Format_RGB888);
    heif_image *image = nullptr;
    heif_image_create(
        size.width(), size.height(), heif_colorspace_RGB, heif_chroma_interleaved_RGB, &image);
    heif_image_add_plane(image, heif_channel_interleaved, size.width(), size.height(), 8);
    int bytesPerLine = 0;
    uint8_t *plane = heif_image_get_plane(image, heif_channel_interleaved, &bytesPerLine);
    for (int y = 0; y < size.height(); ++y)
        std::memcpy(plane + y * bytesPerLine, picture.constScanLine(y), size_t(size.width()) * 3);
    heif_context *context = heif_context_alloc();
    heif_encoder *encoder = nullptr;
    heif_context_get_encoder_for_format(context, heif_compression_HEVC, &encoder);
    heif_encoding_options *options = heif_encoding_options_alloc();
    options->image_orientation = heif_orientation_rotate_90_cw;
    heif_context_encode_image(context, image, encoder, options, nullptr);
    heif_context_write_to_file(context, QFile::encodeName(path).constData());
    heif_encoding_options_free(options);
    heif_encoder_release(encoder);
    heif_context_free(context);
    heif_image_release(image);
}

int lightness(const QImage &image, double x, double y)
{
    return qGray(image.pixel(int((image.width() - 1) * x), int((image.height() - 1) * y)));
}

bool onMainThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

}

class PreparationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void tellsAPhotoByItsContent_data()
    {
        QTest::addColumn<QString>("made");
        QTest::addColumn<QString>("named");
        QTest::addColumn<QString>("extension");
        QTest::newRow("JPEG") << u"JPEG"_s << u"a.heic"_s << u"jpeg"_s;
        QTest::newRow("PNG") << u"PNG"_s << u"a.jpg"_s << u"png"_s;
        QTest::newRow("HEIC") << u"HEIC"_s << u"a.png"_s << u"jpeg"_s;
        QTest::newRow("BMP") << u"BMP"_s << u"a.jpg"_s << u""_s;
        QTest::newRow("damaged HEIC") << u"half"_s << u"a.heic"_s << QString();
        QTest::newRow("HEIC of 400 megapixels") << u"huge"_s << u"a.heic"_s << QString();
        QTest::newRow("nothing") << QString() << u"a.jpg"_s << QString();
    }

    void tellsAPhotoByItsContent()
    {
        QFETCH(QString, made);
        QFETCH(QString, named);
        QFETCH(QString, extension);
        const QString path = at(named);
        const bool heic = made == u"HEIC" || made == u"half" || made == u"huge";
        if (heic) {
            writeHeic(at(u"heic"_s), {641, 361});
            QByteArray whole = contentOf(at(u"heic"_s));
            const bool huge = made == u"huge";
            // Behind the name and 4 bytes more: width and height, 4 bytes each.
            for (qsizetype at = 0; huge && (at = whole.indexOf("ispe", at)) > 0; at += 16)
                whole.replace(at + 8, 8, QByteArray("\0\0\x4e\x20", 4).repeated(2));
            write(path, made == u"half" ? whole.first(whole.size() / 2) : whole);
        } else if (!made.isNull()) {
            writePhoto(path, made.toLatin1(), {64, 48});
        }
        const auto result = prepared(path);
        QCOMPARE(result.error.isNull(), !extension.isNull());
        if (extension.isNull())
            return;
        QCOMPARE(result.fileExtension, extension);
        QVERIFY(result.data.writeAtomically(at(u"out"_s), {}));
        const QByteArray bytes = contentOf(at(u"out"_s));
        QVERIFY(heic ? bytes.startsWith("\xff\xd8\xff") : bytes == contentOf(path));
        if (heic)
            QCOMPARE(QImage::fromData(bytes).size(), QSize(641, 361));
    }

    void keepsAHeicUpright()
    {
        writeTurnedHeic(at(u"a.heic"_s), {640, 360});
        const auto result = prepared(at(u"a.heic"_s));
        QVERIFY(result.data.writeAtomically(at(u"out"_s), {}));
        const QImage image(at(u"out"_s), "JPEG");
        QCOMPARE(image.size(), QSize(360, 640));
        QVERIFY(lightness(image, 0.9, 0.5) < 30 && lightness(image, 0.1, 0.5) > 220);
    }

    void exportsAClip_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("turned");
        QTest::addColumn<bool>("sound");
        QTest::addColumn<QSize>("size");
        const auto row
            = [](const char *name, const char *stored, bool turned, bool sound, QSize size) {
                  QTest::newRow(name) << QString::fromLatin1(stored) << turned << sound << size;
              };
        row("lying, with sound", "width=1280,height=720", false, true, {960, 540});
        row("held upright", "width=1280,height=720", true, true, {540, 960});
        row("stored upright", "width=360,height=1280", false, false, {270, 960});
        row("odd", "width=321,height=181", false, false, {320, 180});
        row("small and turned", "width=320,height=240", true, false, {240, 320});
        row("square", "width=1000,height=1000", false, false, {540, 540});
        row("wide pixels", "width=360,height=540,pixel-aspect-ratio=2/1", false, false, {720, 540});
    }

    void exportsAClip()
    {
        QFETCH(QString, stored);
        QFETCH(bool, turned);
        QFETCH(bool, sound);
        QFETCH(QSize, size);
        writeClip(at(u"a clip.mp4"_s), stored, sound ? Sound::Ticking : Sound::None);
        if (turned)
            turnClip(at(u"a clip.mp4"_s));
        QList<double> progress;
        const auto result = exported(at(u"a clip.mp4"_s), &progress);
        QCOMPARE(result.error, QString());
        QVERIFY(std::is_sorted(progress.cbegin(), progress.cend()));
        QCOMPARE(progress.constLast(), 1.0);
        const auto clip = MediaCodecs::shared().clipInfo(result.filePath, {});
        QCOMPARE(clip.size, size);
        QVERIFY(!clip.isTurned);
        QVERIFY(qAbs(clip.duration.count() - 2000) < 200);
        const QByteArray bytes = contentOf(result.filePath);
        QVERIFY(bytes.contains("avc1"));
        QCOMPARE(bytes.contains("mp4a"), sound);
        const QImage frame = Thumbnail::ofVideo(result.filePath, 200, Qt::KeepAspectRatio).image;
        // What was at the top is at the right when it was turned.
        const double dark = turned ? lightness(frame, 0.95, 0.5) : lightness(frame, 0.5, 0.05);
        const double light = turned ? lightness(frame, 0.05, 0.5) : lightness(frame, 0.5, 0.95);
        QVERIFY2(light - dark > 100, qPrintable(u"%1 %2"_s.arg(dark).arg(light)));
    }

    void refusesWhatIsNoClip()
    {
        const QString path = at(u"clip.mp4"_s);
        const auto verifyRefusal = [&](const char *kind) {
            const auto result = exported(path);
            QVERIFY2(!result.error.isNull() && result.filePath.isNull(), kind);
            QCOMPARE(kept(), {});
            QVERIFY2(Thumbnail::ofVideo(path, 100).image.isNull(), kind);
        };
        verifyRefusal("nothing");
        QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
        verifyRefusal("pipe");
        QVERIFY(QFile::remove(path));
        write(path, QByteArray("no clip\n").repeated(4000));
        verifyRefusal("text");
        writeSound(path);
        verifyRefusal("sound only");
        writeClip(path, u"width=320,height=240"_s, Sound::Ticking);
        QByteArray clip = contentOf(path);
        write(path, clip.first(clip.size() / 2));
        verifyRefusal("cut off");
        write(path, clip.replace(clip.indexOf("avcC") + 8, 60, QByteArray(60, '\x5a')));
        verifyRefusal("damaged within");
    }

    void sameClipGivesTheSameBytes()
    {
        writeClip(at(u"a.mp4"_s), u"width=1280,height=720"_s, Sound::Ticking);
        QFile::copy(at(u"a.mp4"_s), at(u"b.mp4"_s));
        const auto first = exported(at(u"a.mp4"_s));
        const QByteArray bytes = contentOf(first.filePath);
        // Seconds of making must not be there, in which two exports may agree by chance.
        for (const char *box : {"mvhd", "tkhd", "mdhd"})
            QCOMPARE(bytes.sliced(bytes.indexOf(box) + 8, 8), QByteArray(8, '\0'));
        QVERIFY(QFile::remove(first.filePath));
        QCOMPARE(contentOf(exported(at(u"b.mp4"_s)).filePath), bytes);

        write(first.filePath, "kept");
        QCOMPARE(contentOf(exported(at(u"b.mp4"_s)).filePath), "kept"_ba);
    }

    void anExportCanBeStopped()
    {
        writeClip(at(u"a.mp4"_s), u"width=640,height=360"_s, Sound::None, 600);
        for (const bool destroyed : {false, true}) {
            auto videoExport = std::make_unique<VideoExport>(at(u"cache"_s));
            QList<VideoExport::Result> answers;
            const auto answered = [&](const auto &result) { answers += result; };
            bool running = false;
            videoExport->exportClip(
                at(u"a.mp4"_s), [&](double) { running = true; }, answered);
            videoExport->exportClip(at(u"a.mp4"_s), {}, answered);
            TRY_VERIFY(running);
            if (destroyed)
                videoExport.reset();
            else
                videoExport->cancel();
            TRY_COMPARE(answers.size(), destroyed ? 0 : 2);
            for (const auto &answer : answers)
                QVERIFY(!answer.error.isNull());
            QCOMPARE(kept(), {});
        }
    }

private:
    QString at(const QString &name) const { return m_folder->filePath(name); }
    QStringList kept() const { return QDir(at(u"cache"_s)).entryList(QDir::Files, QDir::Time); }

    PhotoPreparation::Result prepared(const QString &path) const
    {
        PhotoPreparation preparation;
        QList<PhotoPreparation::Result> results;
        preparation.preparePhoto(path, [&](const auto &result) {
            results += result;
            QVERIFY(onMainThread());
        });
        if (!QTest::qWaitFor([&] { return !results.isEmpty(); }, 20'000))
            qFatal("no answer");
        return results.constFirst();
    }

    VideoExport::Result exported(const QString &path, QList<double> *progress = nullptr) const
    {
        VideoExport videoExport(at(u"cache"_s));
        std::optional<VideoExport::Result> answer;
        videoExport.exportClip(
            path,
            [&](double share) {
                QVERIFY(onMainThread() && !answer);
                if (progress)
                    *progress += share;
            },
            [&](const auto &result) {
                QVERIFY(onMainThread() && !answer);
                answer = result;
            });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }, 60'000))
            qFatal("no answer");
        return *answer;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(PreparationTest)
#include "PreparationTest.moc"
