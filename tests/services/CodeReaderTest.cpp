#include "services/scan/CodeReader.h"

#include "services/SampleCodes.h"
#include "services/scan/CodeScan.h"
#include "services/scan/WCQRCodeScanningVC.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "ui/shell/Shell.h"

#include <QLoggingCategory>
#include <QTest>
#include <QTransform>

#include <array>

using namespace Qt::StringLiterals;
using SampleCodes::Format;
using SampleCodes::qr;
using Status = CaptureDevice::AuthorizationStatus;

namespace {

//! A camera whose permission the test decides.
class ScriptedCamera : public CaptureDevice
{
public:
    bool isPresent() const override { return present; }
    AuthorizationStatus authorizationStatus() const override { return status; }
    void requestAccess(std::function<void(bool)> answer) override { asked = std::move(answer); }
    void start() override { }
    void stop() override { }
    bool hasTorch() const override { return false; }
    void setTorchOn(bool) override { }

    bool present = true;
    AuthorizationStatus status = AuthorizationStatus::Authorized;
    std::function<void(bool)> asked;
};

constexpr QSize hd {1920, 1080};
const QString ean = QStringLiteral("5901234123457");

//! A QR code of no characters, which no writer makes: 21 modules a side, a row a number.
QImage emptyCode()
{
    constexpr std::array rows {0x1fc57f, 0x104141, 0x17545d, 0x17415d, 0x174b5d, 0x104e41, 0x1fd57f,
        0x001400, 0x1df5c4, 0x1496aa, 0x054aee, 0x09afbb, 0x1beeee, 0x001c46, 0x1fd111, 0x105c46,
        0x175155, 0x174aaa, 0x1756ed, 0x105bba, 0x1fdaef};
    constexpr int side = int(rows.size());
    QImage modules(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            modules.setPixelColor(
                x, y, rows[size_t(y)] >> (side - 1 - x) & 1 ? Qt::black : Qt::white);
    }
    return modules.scaled(QSize(side, side) * 12);
}

QImage turned(const QImage &picture, double angle)
{
    return picture.transformed(QTransform().rotate(angle), Qt::SmoothTransformation);
}

QImage inverted(QImage picture)
{
    picture.invertPixels();
    return picture;
}

}

//! Codes in pictures and frames, and the camera's permission before a scan.
class CodeReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsPictures_data()
    {
        const QImage line = SampleCodes::picture(Format::Code128, u"STU-42"_s, {500, 160});
        QTest::addColumn<QImage>("picture");
        QTest::addColumn<QString>("code");
        QTest::addRow("QR, Chinese") << qr(u"https://校/?班=三"_s) << u"https://校/?班=三"_s;
        QTest::addRow("EAN-13") << SampleCodes::picture(Format::EAN13, ean) << ean;
        for (const double angle : {0, 45, 90, 180})
            QTest::addRow("Code 128, %g°", angle)
                << turned(SampleCodes::sheet({900, 600}, {line}, Qt::white), angle) << u"STU-42"_s;
        QTest::addRow("inverted") << inverted(qr(u"night"_s)) << u"night"_s;
        QTest::addRow("empty") << QImage() << QString();
        QTest::addRow("several") << SampleCodes::sheet({1800, 600}, {line, line, line})
                                 << u"STU-42"_s;
    }

    void readsPictures()
    {
        QFETCH(const QImage, picture);
        QFETCH(const QString, code);
        QCOMPARE(CodeReader::readPicture(picture), code);
    }

    void readsEveryKindOfFrame_data()
    {
        using Kind = QVideoFrameFormat;
        const QImage picture = SampleCodes::sheet(hd, {qr(u"seen"_s)});
        QTest::addColumn<QVideoFrame>("frame");
        QTest::addRow("NV12") << SampleCodes::frame(picture, Kind::Format_NV12);
        QTest::addRow("YUV420P") << SampleCodes::frame(picture, Kind::Format_YUV420P);
        QTest::addRow("UYVY") << SampleCodes::frame(picture, Kind::Format_UYVY, 1, 2);
        QTest::addRow("BGRX") << SampleCodes::frame(picture, Kind::Format_BGRX8888, 0, 4);
    }

    void readsEveryKindOfFrame()
    {
        QFETCH(const QVideoFrame, frame);
        const CodeReader::FrameContent content = CodeReader::readFrame(frame);
        QCOMPARE(content.codes, QStringList {u"seen"_s});
        QVERIFY(content.brightness > 1 && content.brightness < 4);
        QVERIFY(CodeReader::brightnessOf(44) < WCQRCodeScanningVC::darkBrightness);
        QVERIFY(CodeReader::brightnessOf(46) > WCQRCodeScanningVC::darkBrightness);
    }

    void asksForTheCamera_data()
    {
        QTest::addColumn<bool>("present");
        QTest::addColumn<Status>("status");
        QTest::addColumn<QString>("alert");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<bool>("opens");
        const QString settings = u"请去-> [设置 - 隐私 - 相机 - SGQRCodeExample] 打开访问开关"_s;
        QTest::addRow("none") << false << Status::Denied << u"未检测到您的摄像头"_s << false
                              << false;
        QTest::addRow("restricted") << true << Status::Restricted << QString() << false << false;
        QTest::addRow("denied") << true << Status::Denied << settings << false << false;
        QTest::addRow("authorised") << true << Status::Authorized << QString() << false << true;
        QTest::addRow("granted") << true << Status::NotDetermined << QString() << true << true;
        QTest::addRow("refused") << true << Status::NotDetermined << QString() << false << false;
    }

    void asksForTheCamera()
    {
        QFETCH(const bool, present);
        QFETCH(const Status, status);
        QFETCH(const QString, alert);
        QFETCH(const bool, answer);
        QFETCH(const bool, opens);
        ManualMainQueue queue;
        Shell shell(queue);
        ScriptedCamera camera;
        camera.present = present;
        camera.status = status;
        CodeScan scan({.shell = &shell, .camera = &camera, .chooseFromAlbum = {}});
        scan.scanQrCode([](const QString &) {});
        QCOMPARE(bool(camera.asked), present && status == Status::NotDetermined);
        if (camera.asked) {
            scan.scanQrCode({}); // one question is enough
            camera.asked(answer);
        }
        QCOMPARE(shell.navigator()->topViewController() != nullptr, opens);
        QCOMPARE(shell.alertView()->message(), alert);
        QCOMPARE(shell.alertView()->title(), alert.isEmpty() ? QString() : u"温馨提示"_s);
    }

    void aCodeWithoutContentIsToldAndScanningGoesOn()
    {
        ManualMainQueue queue;
        Shell shell(queue);
        ScriptedCamera camera;
        QString told;
        WCQRCodeScanningVC scanner(
            {.shell = &shell, .camera = &camera, .chooseFromAlbum = {}}, [] {});
        scanner.scanQrSuccessBlock = [&told](const QString &code) { told = code; };
        scanner.viewDidAppear();
        const auto show = [&camera](const QImage &code) {
            Q_EMIT camera.frameCaptured(
                SampleCodes::frame(SampleCodes::sheet(hd, {code}), QVideoFrameFormat::Format_NV12));
        };
        show(emptyCode());
        TRY_COMPARE(shell.toast()->text(), u"暂未识别出扫描的二维码"_s);
        QVERIFY(scanner.isScanning() && !scanner.isClosed() && told.isNull());

        // What it says is for the page, not for the log.
        QLoggingCategory::setFilterRules(u"vant.services.debug=true"_s);
        QTest::ignoreMessage(QtDebugMsg, "metadataObjects - - [\"***\"]");
        show(qr(u"door 7"_s));
        TRY_COMPARE(told, u"door 7"_s);
        QVERIFY(scanner.isClosed());
    }
};

QTEST_MAIN(CodeReaderTest)
#include "CodeReaderTest.moc"
