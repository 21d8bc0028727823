#include "upload/SampleMedia.h"
#include "upload/preparation/MediaCodecs.h"
#include "upload/preparation/PhotoPreparation.h"
#include "upload/preparation/Thumbnail.h"
#include "upload/preparation/VideoExport.h"

#include "support/Table.h"

#include <QDir>
#include <QImage>
#include <QThread>

#include <libheif/heif.h>

#include <cstring>

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

    void passesPhotosOnAndMakesOthersPhotos()
    {
        const std::tuple<const char *, QString, QString> rows[] {{"JPEG", u"a.heic"_s, u"jpeg"_s},
            {"PNG", u"a.jpg"_s, u"png"_s}, {"BMP", u"a.jpg"_s, u""_s}};
        for (const auto &[format, name, extension] : rows) {
            writePhoto(at(name), format, {64, 48});
            const auto result = prepared(at(name));
            QVERIFY(result.error.isNull());
            QCOMPARE(result.fileExtension, extension);
            QCOMPARE(bytesOf(result), contentOf(at(name)));
        }
    }

    void makesAHeicAJpeg()
    {
        const QString path = at(u"a.png"_s);
        QVERIFY(!prepared(path).error.isNull());
        writeHeic(path, {641, 361});
        const QByteArray whole = contentOf(path);
        const auto result = prepared(path);
        QCOMPARE(result.fileExtension, u"jpeg"_s);
        QVERIFY(bytesOf(result).startsWith("\xff\xd8\xff"));
        QCOMPARE(QImage::fromData(bytesOf(result)).size(), QSize(641, 361));
        write(path, whole.first(whole.size() / 2));
        QVERIFY(!prepared(path).error.isNull());
        // Of 400 megapixels. Behind the name and 4 bytes more: width and height, 4 bytes each.
        QByteArray huge = whole;
        for (qsizetype at = 0; (at = huge.indexOf("ispe", at)) > 0; at += 16)
            huge.replace(at + 8, 8, QByteArray("\0\0\x4e\x20", 4).repeated(2));
        QVERIFY(huge != whole);
        write(path, huge);
        QVERIFY(!prepared(path).error.isNull());
    }

    void keepsAHeicUpright()
    {
        writeTurnedHeic(at(u"a.heic"_s), {640, 360});
        const QImage image = QImage::fromData(bytesOf(prepared(at(u"a.heic"_s))));
        QCOMPARE(image.size(), QSize(360, 640));
        QVERIFY(lightness(image, 0.9, 0.5) < 30 && lightness(image, 0.1, 0.5) > 220);
    }

    void exportsAClip_data()
    {
        Clips::rows({
            {"lying, with sound", u"width=1280,height=720"_s, false, true, {960, 540}},
            {"held upright", u"width=1280,height=720"_s, true, true, {540, 960}},
            {"stored upright", u"width=360,height=1280"_s, false, false, {270, 960}},
            {"odd", u"width=321,height=181"_s, false, false, {320, 180}},
            {"small and turned", u"width=320,height=240"_s, true, false, {240, 320}},
            {"square", u"width=1000,height=1000"_s, false, false, {540, 540}},
            {"wide pixels", u"width=360,height=540,pixel-aspect-ratio=2/1"_s, false, false,
                {720, 540}},
        });
    }

    void exportsAClip()
    {
        const auto [stored, turned, sound, size] = Clips::row();
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
    using Clips = Table<QString, bool, bool, QSize>; // as stored, turned, with sound, exported

    QString at(const QString &name) const { return m_folder->filePath(name); }
    QStringList kept() const { return QDir(at(u"cache"_s)).entryList(QDir::Files, QDir::Time); }

    PhotoPreparation::Result prepared(const QString &path) const
    {
        PhotoPreparation preparation;
        return answerOf<PhotoPreparation::Result>([&](const auto &then) {
            preparation.preparePhoto(path, [then](const auto &result) {
                QVERIFY(onMainThread());
                then(result);
            });
        });
    }
    QByteArray bytesOf(const PhotoPreparation::Result &result) const
    {
        return result.data.writeAtomically(at(u"out"_s), {}) ? contentOf(at(u"out"_s)) : "none"_ba;
    }

    VideoExport::Result exported(const QString &path, QList<double> *progress = nullptr) const
    {
        VideoExport videoExport(at(u"cache"_s));
        return answerOf<VideoExport::Result>([&](const auto &then) {
            const auto note = [progress](double share) {
                QVERIFY(onMainThread());
                if (progress)
                    *progress += share;
            };
            videoExport.exportClip(path, note, [then](const auto &result) {
                QVERIFY(onMainThread());
                then(result);
            });
        });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(PreparationTest)
#include "PreparationTest.moc"
