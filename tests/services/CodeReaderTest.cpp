#include "services/scan/CodeReader.h"

#include "services/SampleCodes.h"
#include "services/ScriptedCamera.h"
#include "services/scan/ScanManager.h"
#include "services/scan/WCQRCodeScanningVC.h"
#include "support/Patience.h"

#include <QSignalSpy>
#include <QTransform>

using namespace Qt::StringLiterals;
using SampleCodes::Format;
using SampleCodes::qr;

namespace {

constexpr QSize hd {1920, 1080};
const QString ean = QStringLiteral("5901234123457");

QImage turned(const QImage &picture, double angle)
{
    return picture.transformed(QTransform().rotate(angle), Qt::SmoothTransformation);
}
QImage blurred(const QImage &picture)
{
    return picture.scaled(picture.size() / 7, Qt::KeepAspectRatio, Qt::SmoothTransformation)
        .scaled(picture.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
}
QImage inverted(QImage picture)
{
    picture.invertPixels();
    return picture;
}

}

class CodeReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsPictures_data();
    void readsPictures();
    void readsEveryKindOfFrame_data();
    void readsEveryKindOfFrame();
    void dropsFramesWhileItReads();
};

void CodeReaderTest::readsPictures_data()
{
    const QImage line = SampleCodes::picture(Format::Code128, u"STU-42"_s, {500, 160});
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QString>("code");
    QTest::addRow("QR, Chinese") << qr(u"https://校/?班=三"_s) << u"https://校/?班=三"_s;
    QTest::addRow("EAN-13") << SampleCodes::picture(Format::EAN13, ean) << ean;
    QTest::addRow("EAN-8") << SampleCodes::picture(Format::EAN8, u"96385074"_s) << u"96385074"_s;
    for (const double angle : {0, 45, 90, 180})
        QTest::addRow("Code 128, %g°", angle)
            << turned(SampleCodes::sheet({900, 600}, {line}, Qt::white), angle) << u"STU-42"_s;
    QTest::addRow("inverted") << inverted(qr(u"night"_s)) << u"night"_s;
    QTest::addRow("blurred") << blurred(qr(u"fog"_s)) << u"fog"_s;
    QTest::addRow("no kind of ours")
        << SampleCodes::picture(Format::Aztec, u"other"_s) << QString();
    QTest::addRow("empty") << QImage() << QString();
    QTest::addRow("several") << SampleCodes::sheet({1800, 600}, {line, line, line}) << u"STU-42"_s;
}

void CodeReaderTest::readsPictures()
{
    QFETCH(const QImage, picture);
    QFETCH(const QString, code);
    QCOMPARE(CodeReader::readPicture(picture), code);
}

void CodeReaderTest::readsEveryKindOfFrame_data()
{
    using Kind = QVideoFrameFormat;
    const QImage picture = SampleCodes::sheet(hd, {qr(u"seen"_s)});
    QTest::addColumn<QVideoFrame>("frame");
    QTest::addRow("Y8") << SampleCodes::frame(picture, Kind::Format_Y8);
    QTest::addRow("NV12") << SampleCodes::frame(picture, Kind::Format_NV12);
    QTest::addRow("YUV420P") << SampleCodes::frame(picture, Kind::Format_YUV420P);
    QTest::addRow("YUYV") << SampleCodes::frame(picture, Kind::Format_YUYV, 0, 2);
    QTest::addRow("UYVY") << SampleCodes::frame(picture, Kind::Format_UYVY, 1, 2);
    QTest::addRow("BGRX") << SampleCodes::frame(picture, Kind::Format_BGRX8888, 0, 4);
}

void CodeReaderTest::readsEveryKindOfFrame()
{
    QFETCH(const QVideoFrame, frame);
    const CodeReader::FrameContent content = CodeReader::readFrame(frame);
    QCOMPARE(content.codes, QStringList {u"seen"_s});
    QVERIFY(content.brightness > 1 && content.brightness < 4);
    QVERIFY(CodeReader::brightnessOf(44) < WCQRCodeScanningVC::darkBrightness);
    QVERIFY(CodeReader::brightnessOf(46) > WCQRCodeScanningVC::darkBrightness);
}

void CodeReaderTest::dropsFramesWhileItReads()
{
    const auto frameOf = [](const QString &text) {
        return SampleCodes::frame(SampleCodes::sheet(hd, {qr(text)}), QVideoFrameFormat::Format_Y8);
    };
    const QVideoFrame first = frameOf(u"first"_s), second = frameOf(u"second"_s);
    ScriptedCamera camera;
    ScanManager manager(&camera);
    QSignalSpy codes(&manager, &ScanManager::didOutputMetadataObjects);
    QSignalSpy measured(&manager, &ScanManager::didMeasureBrightness);
    manager.start();
    for (const QVideoFrame &frame : {first, second, second})
        Q_EMIT camera.frameCaptured(frame);
    TRY_COMPARE(measured.size(), 1);
    Q_EMIT camera.frameCaptured(first);
    TRY_COMPARE(measured.size(), 2);
    QCOMPARE(codes.size(), 1); // the same is told once
    QCOMPARE(codes.first().first().toStringList(), QStringList {u"first"_s});

    Q_EMIT camera.frameCaptured(second);
    manager.stop();
    manager.start();
    TRY_VERIFY((Q_EMIT camera.frameCaptured(first), measured.size() == 3));
    QCOMPARE(codes.last().first().toStringList(), QStringList {u"first"_s});
}

QTEST_MAIN(CodeReaderTest)
#include "CodeReaderTest.moc"
