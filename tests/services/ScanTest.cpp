#include "platform/FeedCaptureDevice.h"
#include "services/SampleCodes.h"
#include "services/ScriptedCamera.h"
#include "services/scan/CodeScan.h"
#include "ui/UiHarness.h"

#include <QTemporaryDir>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_ServicesPlugin)

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using SampleCodes::Format;
using SampleCodes::qr;
using Status = CaptureDevice::AuthorizationStatus;

namespace {

constexpr QSize hd {1920, 1080};
const QString ean = QStringLiteral("5901234123457");

}

class ScanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void asksForTheCamera_data();
    void asksForTheCamera();
    void theFirstCodeGoesToThePage_data();
    void theFirstCodeGoesToThePage();
    void theTorchIsOfferedInTheDark();
    void aCodeFromTheAlbumStaysHere_data();
    void aCodeFromTheAlbumStaysHere();

private:
    QString saved(const QImage &picture);
    void scan(std::unique_ptr<CaptureDevice> camera);
    void scanPicture(const QImage &picture);
    ScriptedCamera *scanScripted(bool present = true, Status status = Status::Authorized);
    bool shows(const QString &text) const { return m_ui->itemWithText(text); }

    QTemporaryDir m_folder;
    std::unique_ptr<CaptureDevice> m_camera;
    std::optional<UiHarness> m_ui;
    std::unique_ptr<CodeScan> m_scan;
    ViewController m_home;
    QStringList m_read;
    ScanEnvironment::AlbumAnswer m_album;
};

void ScanTest::init()
{
    m_ui.emplace();
    m_ui->shell.navigator()->setAnimated(false);
    m_ui->showRootView();
    m_ui->shell.navigator()->setRootViewController(u"Sample"_s, &m_home);
    m_read.clear();
    m_album = {};
}

QString ScanTest::saved(const QImage &picture)
{
    const QString path = m_folder.filePath(u"picture.png"_s);
    if (!picture.save(path))
        qFatal("no picture");
    return path;
}

void ScanTest::cleanup()
{
    m_ui->shell.navigator()->setRootViewController({});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_scan.reset();
    m_ui.reset();
}

void ScanTest::scan(std::unique_ptr<CaptureDevice> camera)
{
    m_camera = std::move(camera);
    m_scan = std::make_unique<CodeScan>(ScanEnvironment {.shell = &m_ui->shell,
        .camera = m_camera.get(),
        .chooseFromAlbum = [this](auto answer) { m_album = std::move(answer); }});
    m_scan->scanQrCode([this](const QString &text) { m_read << text; });
}

void ScanTest::scanPicture(const QImage &picture)
{
    scan(std::make_unique<FeedCaptureDevice>(saved(picture), m_ui->queue));
}

ScriptedCamera *ScanTest::scanScripted(bool present, Status status)
{
    auto camera = std::make_unique<ScriptedCamera>();
    ScriptedCamera *scripted = camera.get();
    camera->present = present;
    camera->status = status;
    scan(std::move(camera));
    return scripted;
}

void ScanTest::asksForTheCamera_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<Status>("status");
    QTest::addColumn<QString>("alert");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<bool>("opens");
    const QString settings = u"请去-> [设置 - 隐私 - 相机 - SGQRCodeExample] 打开访问开关"_s;
    QTest::addRow("none") << false << Status::Denied << u"未检测到您的摄像头"_s << false << false;
    QTest::addRow("restricted") << true << Status::Restricted << QString() << false << false;
    QTest::addRow("denied") << true << Status::Denied << settings << false << false;
    QTest::addRow("authorised") << true << Status::Authorized << QString() << false << true;
    QTest::addRow("granted") << true << Status::NotDetermined << QString() << true << true;
    QTest::addRow("refused") << true << Status::NotDetermined << QString() << false << false;
}

void ScanTest::asksForTheCamera()
{
    QFETCH(const bool, present);
    QFETCH(const Status, status);
    QFETCH(const QString, alert);
    QFETCH(const bool, answer);
    QFETCH(const bool, opens);
    ScriptedCamera *camera = scanScripted(present, status);
    QCOMPARE(bool(camera->asked), present && status == Status::NotDetermined);
    if (camera->asked) {
        m_scan->scanQrCode({}); // one question is enough
        camera->asked(answer);
    }
    TRY_COMPARE(camera->starts, int(opens));
    QCOMPARE(m_ui->shell.navigator()->topViewController() != &m_home, opens);
    QCOMPARE(m_ui->shell.alertView()->message(), alert);
    QCOMPARE(m_ui->shell.alertView()->title(), alert.isEmpty() ? QString() : u"温馨提示"_s);
}

void ScanTest::theFirstCodeGoesToThePage_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QString>("code");
    QTest::addRow("QR") << SampleCodes::sheet(hd, {qr(u"https://school/"_s)})
                        << u"https://school/"_s;
    QTest::addRow("EAN-13") << SampleCodes::sheet(
        hd, {SampleCodes::picture(Format::EAN13, ean, {500, 200})})
                            << ean;
}

void ScanTest::theFirstCodeGoesToThePage()
{
    QFETCH(const QImage, picture);
    QFETCH(const QString, code);
    scanPicture(picture);
    TRY_VERIFY(shows(u"将二维码/条码放入框内, 即可自动扫描"_s));
    TRY_VERIFY((m_ui->queue.advance(100ms), !m_read.isEmpty()));
    QCOMPARE(m_read, QStringList {code});
    TRY_COMPARE(m_ui->shell.navigator()->topViewController(), &m_home);
    m_ui->queue.advance(1s); // a closed scanner reads nothing
    QCOMPARE(m_read.size(), 1);

    // The page may ask again at once; the back key ends the wish.
    m_scan->scanQrCode([this](const QString &text) { m_read << text; });
    TRY_VERIFY(shows(u"相册"_s));
    QTest::keyClick(&m_ui->view, Qt::Key_Escape);
    TRY_COMPARE(m_ui->shell.navigator()->topViewController(), &m_home);
    QCOMPARE(m_read.size(), 1);
}

void ScanTest::theTorchIsOfferedInTheDark()
{
    QImage night(hd, QImage::Format_RGB32);
    night.fill(QColor(4, 4, 4));
    QPainter painter(&night);
    painter.setOpacity(0.1);
    painter.drawImage(700, 300, SampleCodes::picture(Format::Aztec, u"not ours"_s));
    painter.end();
    scanPicture(night);
    TRY_VERIFY((m_ui->queue.advance(100ms), shows(u"打开手电筒"_s)));
    m_ui->click(m_ui->itemWithText(u"打开手电筒"_s));
    TRY_VERIFY(shows(u"关闭手电筒"_s));
    m_ui->click(m_ui->itemWithText(u"相册"_s));
    TRY_VERIFY(m_album);
    QVERIFY2(!shows(u"关闭手电筒"_s), "it goes out with the camera");
    m_album(std::nullopt);
    TRY_VERIFY((m_ui->queue.advance(100ms), shows(u"打开手电筒"_s)));
}

void ScanTest::aCodeFromTheAlbumStaysHere_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QString>("result");
    QTest::addColumn<bool>("labelled");
    QTest::addRow("address") << qr(u"https://school/"_s) << u"https://school/"_s << false;
    QTest::addRow("text") << qr(u"三年二班"_s) << u"三年二班"_s << true;
    QTest::addRow("none") << SampleCodes::sheet({300, 300}, {}) << QString() << false;
}

void ScanTest::aCodeFromTheAlbumStaysHere()
{
    QFETCH(const QImage, picture);
    QFETCH(const QString, result);
    QFETCH(const bool, labelled);
    ScriptedCamera *camera = scanScripted();
    TRY_VERIFY(shows(u"相册"_s));
    m_ui->click(m_ui->itemWithText(u"相册"_s));
    TRY_VERIFY(m_album);
    m_album(saved(picture));
    if (result.isEmpty()) {
        TRY_COMPARE(m_ui->shell.toast()->text(), u"暂未识别出二维码"_s);
        TRY_COMPARE(camera->starts, 2);
    } else {
        TRY_VERIFY(shows(result));
        QCOMPARE(shows(u"您扫描的条形码结果如下： "_s), labelled);
        m_ui->click(m_ui->itemWithText(labelled ? u"back"_s : u"刷新"_s));
        TRY_VERIFY(shows(u"相册"_s) && !shows(result));
        QCOMPARE(camera->starts, 2);
    }
    m_ui->click(m_ui->itemWithText(u"返回"_s));
    TRY_COMPARE(m_ui->shell.navigator()->topViewController(), &m_home);
    QVERIFY(m_read.isEmpty());
}

QTEST_MAIN(ScanTest)
#include "ScanTest.moc"
