#include "services/scan/CodeReader.h"

#include "services/SampleCodes.h"
#include "services/scan/CodeScan.h"
#include "services/scan/WCQRCodeScanningVC.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "ui/shell/Shell.h"

#include <QLoggingCategory>
#include <QTransform>

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

}

//! Codes in pictures and frames, and the camera's permission before a scan.
class CodeReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsPictures()
    {
        const QImage line = SampleCodes::picture(Format::Code128, u"STU-42"_s, {500, 160});
        const QImage page = SampleCodes::sheet({900, 600}, {line}, Qt::white);
        QImage night = qr(u"night"_s);
        night.invertPixels();
        const std::pair<QImage, QString> rows[] {
            {qr(u"https://校/?班=三"_s), u"https://校/?班=三"_s},
            {SampleCodes::picture(Format::EAN13, u"5901234123457"_s), u"5901234123457"_s},
            {page, u"STU-42"_s},
            {page.transformed(QTransform().rotate(45), Qt::SmoothTransformation), u"STU-42"_s},
            {page.transformed(QTransform().rotate(90)), u"STU-42"_s},
            {page.transformed(QTransform().rotate(180)), u"STU-42"_s},
            {SampleCodes::sheet({1800, 600}, {line, line, line}), u"STU-42"_s},
            {night, u"night"_s},
            {QImage(), {}},
        };
        for (const auto &[picture, code] : rows)
            QCOMPARE(CodeReader::readPicture(picture), code);
    }

    void readsEveryKindOfFrame()
    {
        using Kind = QVideoFrameFormat;
        const QImage picture = SampleCodes::sheet(hd, {qr(u"seen"_s)});
        for (const QVideoFrame &frame : {SampleCodes::frame(picture, Kind::Format_NV12),
                 SampleCodes::frame(picture, Kind::Format_YUV420P),
                 SampleCodes::frame(picture, Kind::Format_UYVY, 1, 2),
                 SampleCodes::frame(picture, Kind::Format_BGRX8888, 0, 4)}) {
            const CodeReader::FrameContent content = CodeReader::readFrame(frame);
            QCOMPARE(content.codes, QStringList {u"seen"_s});
            QVERIFY(content.brightness > 1 && content.brightness < 4);
        }
        QVERIFY(CodeReader::brightnessOf(44) < WCQRCodeScanningVC::darkBrightness);
        QVERIFY(CodeReader::brightnessOf(46) > WCQRCodeScanningVC::darkBrightness);
    }

    void asksForTheCamera()
    {
        const QString settings = u"请去-> [设置 - 隐私 - 相机 - SGQRCodeExample] 打开访问开关"_s;
        // The camera, what it may, what is alerted, what the user answers, whether it opens.
        const std::tuple<bool, Status, QString, bool, bool> rows[] {
            {false, Status::Denied, u"未检测到您的摄像头"_s, false, false},
            {true, Status::Restricted, {}, false, false},
            {true, Status::Denied, settings, false, false},
            {true, Status::Authorized, {}, false, true},
            {true, Status::NotDetermined, {}, true, true},
            {true, Status::NotDetermined, {}, false, false},
        };
        for (const auto &[present, status, alert, answer, opens] : rows) {
            ManualMainQueue queue;
            Shell shell(queue);
            ScriptedCamera camera;
            camera.present = present;
            camera.status = status;
            CodeScan scan({.shell = &shell, .camera = &camera, .chooseFromAlbum = {}});
            scan.scanQrCode([](const QString &) {});
            QCOMPARE(bool(camera.asked), status == Status::NotDetermined);
            if (camera.asked) {
                scan.scanQrCode({}); // one question is enough
                camera.asked(answer);
            }
            QCOMPARE(shell.navigator()->topViewController() != nullptr, opens);
            QCOMPARE(shell.alertView()->message(), alert);
            QCOMPARE(shell.alertView()->title(), alert.isEmpty() ? QString() : u"温馨提示"_s);
        }
    }

    void scansUntilThereIsACode()
    {
        ManualMainQueue queue;
        Shell shell(queue);
        ScriptedCamera camera;
        QString told;
        WCQRCodeScanningVC scanner(
            {.shell = &shell, .camera = &camera, .chooseFromAlbum = {}}, [] {});
        scanner.scanQrSuccessBlock = [&told](const QString &code) { told = code; };
        scanner.viewDidAppear();
        // What it says is for the page, not for the log.
        QLoggingCategory::setFilterRules(u"vant.services.debug=true"_s);
        QTest::ignoreMessage(QtDebugMsg, "metadataObjects - - [\"***\"]");
        const auto show = [&camera](const QList<QImage> &codes) {
            Q_EMIT camera.frameCaptured(
                SampleCodes::frame(SampleCodes::sheet(hd, codes), QVideoFrameFormat::Format_NV12));
        };
        show({});
        QVERIFY(scanner.isScanning() && !scanner.isClosed());
        TRY_VERIFY((show({qr(u"door 7"_s)}), !told.isNull()));
        QCOMPARE(told, u"door 7"_s);
        QVERIFY(scanner.isClosed());
    }
};

QTEST_MAIN(CodeReaderTest)
#include "CodeReaderTest.moc"
