#include "ui/UiHarness.h"
#include "upload/SmallAlbum.h"
#include "upload/picker/ImagePickerController.h"

#include "support/Patience.h"

#include <QtQml/qqmlextensionplugin.h>
#include <QtTest>

Q_IMPORT_QML_PLUGIN(Vant_UploadPlugin)

using namespace Qt::StringLiterals;

namespace {
constexpr QSize phone {390, 844};
}

class PickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { show(phone, 1); }
    void cleanup() { m_ui.reset(); }

    void numbersTheChoiceAndAnswersInItsOrder();
    void aCancelledPickerAnswersOnceWithNothing_data();
    void aCancelledPickerAnswersOnceWithNothing();
    void showsDamagedPicturesAndDropsVanishedOnes();
    void previewsAndGoesBackToTheGrid();
    void fitsTheWindow_data();
    void fitsTheWindow();

private:
    void show(QSize size, double textScale);
    ImagePickerController *open(const ImagePickerSettings &settings);
    QQuickItem *named(const QString &name) const { return m_ui->itemWithText(name); }
    void click(const QString &name);

    ViewController m_home;
    std::optional<UiHarness> m_ui;
    std::optional<SmallAlbum> m_album;
    QList<std::optional<QList<PhotoAsset>>> m_answers;
};

void PickerTest::show(QSize size, double textScale)
{
    m_ui.emplace(size, textScale);
    m_ui->shell.navigator()->setAnimated(false);
    m_ui->showRootView();
    m_album.emplace();
    m_answers.clear();
}

ImagePickerController *PickerTest::open(const ImagePickerSettings &settings)
{
    auto *picker = ImagePickerController::present(
        &m_ui->shell, &*m_album, {}, settings, [this](const auto &picked) { m_answers << picked; });
    if (!QTest::qWaitFor([picker] { return picker->isLoaded(); }, patienceMs))
        qFatal("the library does not answer");
    return picker;
}

void PickerTest::click(const QString &name)
{
    QTRY_VERIFY2_WITH_TIMEOUT(named(name), qPrintable(name), patienceMs);
    m_ui->click(named(name));
}

void PickerTest::numbersTheChoiceAndAnswersInItsOrder()
{
    for (const QString &name : {u"a.png"_s, u"b.png"_s, u"c.png"_s, u"d.png"_s})
        m_album->add(name);
    ImagePickerController *picker = open({.maxImagesCount = 2});
    click(u"完成"_s);
    QVERIFY2(m_answers.isEmpty(), "there is nothing to answer yet");

    for (const QString &number : {u"3"_s, u"1"_s, u"4"_s})
        click(u"选择照片 "_s + number);
    QCOMPARE(m_ui->shell.toast()->text(), u"你最多只能选择2张照片"_s);
    QCOMPARE(named(u"选择照片 1"_s)->property("number").toInt(), 2);
    QCOMPARE(named(u"选择照片 4"_s)->property("number").toInt(), 0);
    click(u"选择照片 3"_s);
    QCOMPARE(named(u"选择照片 1"_s)->property("number").toInt(), 1);
    click(u"选择照片 2"_s);
    click(u"完成(2)"_s);
    QCOMPARE(m_answers.size(), 1);
    QCOMPARE(namesOf(m_answers.first().value()), (QStringList {u"a.png"_s, u"b.png"_s}));
    TRY_VERIFY(m_ui->shell.navigator()->topViewController() != picker);
}

void PickerTest::aCancelledPickerAnswersOnceWithNothing_data()
{
    QTest::addColumn<QString>("by");
    for (const QString &by : {u"取消"_s, u"back key"_s, u"another root"_s})
        QTest::addRow("%s", qPrintable(by)) << by;
}

void PickerTest::aCancelledPickerAnswersOnceWithNothing()
{
    QFETCH(QString, by);
    m_album->add(u"a.png"_s);
    QPointer<ImagePickerController> picker = open({.maxImagesCount = 9});
    click(u"选择照片 1"_s);
    if (by == u"取消")
        click(by);
    else if (by == u"back key")
        QTest::keyClick(&m_ui->view, Qt::Key_Escape);
    else
        m_ui->shell.navigator()->setRootViewController(u"Sample"_s, &m_home);
    TRY_VERIFY(!picker);
    QCOMPARE(m_answers.size(), 1);
    QVERIFY(!m_answers.first());
}

void PickerTest::showsDamagedPicturesAndDropsVanishedOnes()
{
    m_album->add(u"good.png"_s);
    m_album->add(u"damaged.png"_s, "no picture");
    QFile::remove(m_album->add(u"gone.png"_s));
    const QString last = m_album->add(u"last.png"_s);
    ImagePickerController *picker = open({.maxImagesCount = 9});
    TRY_COMPARE(namesOf(picker->assets()->assets()),
        (QStringList {u"good.png"_s, u"damaged.png"_s, u"last.png"_s}));
    click(u"选择照片 2"_s);
    click(u"选择照片 3"_s);
    QFile::remove(last);
    click(u"完成(2)"_s);
    QVERIFY2(m_answers.isEmpty(), "the user agreed to two");
    click(u"完成(1)"_s);
    QCOMPARE(namesOf(m_answers.value(0).value()), QStringList {u"damaged.png"_s});
}

void PickerTest::previewsAndGoesBackToTheGrid()
{
    m_album->add(u"a.png"_s);
    m_album->add(u"b.png"_s);
    ImagePickerController *picker = open({.maxImagesCount = 9});
    click(u"照片 2"_s);
    TRY_VERIFY(named(u"2/2"_s));
    QTest::keyClick(&m_ui->view, Qt::Key_Left);
    TRY_VERIFY(named(u"1/2"_s));
    QTest::keyClick(&m_ui->view, Qt::Key_Right);
    TRY_VERIFY(named(u"2/2"_s));
    click(u"选择照片 2"_s);
    QTest::keyClick(&m_ui->view, Qt::Key_Escape);
    QCOMPARE(picker->stage(), ImagePickerController::Stage::Grid);
    QCOMPARE(namesOf(picker->selection()->assets()), QStringList {u"b.png"_s});

    click(u"预览"_s);
    TRY_VERIFY(named(u"1/1"_s));
    click(u"完成(1)"_s);
    QCOMPARE(namesOf(m_answers.value(0).value()), QStringList {u"b.png"_s});
}

void PickerTest::fitsTheWindow_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("textScale");
    QTest::newRow("phone") << phone << 1.0;
    QTest::newRow("phone, large text") << phone << 1.5;
    QTest::newRow("small phone, large text") << QSize(320, 568) << 1.5;
    QTest::newRow("desktop") << QSize(1280, 800) << 1.0;
}

// With VANT_PICKER_PICTURES=DIRECTORY it leaves pictures there, for the eye.
void PickerTest::fitsTheWindow()
{
    QFETCH(QSize, size);
    QFETCH(double, textScale);
    show(size, textScale);
    m_ui->shell.safeArea()->setInsets(u"44,34"_s);
    for (int i = 0; i < 48; ++i)
        m_album->add(u"%1.png"_s.arg(i));
    ImagePickerSettings settings {.maxImagesCount = 3};
    settings.setThemeColor(u"#1668dc"_s);
    open(settings);
    for (const QString &number : {u"2"_s, u"4"_s, u"1"_s})
        click(u"选择照片 "_s + number);
    const QRectF fourth = named(u"照片 4"_s)->mapRectToScene(named(u"照片 4"_s)->boundingRect());
    QCOMPARE(fourth.right(), size.width() - 1.0);
    QCOMPARE(fourth.width(), fourth.height());
    const QRectF ok = named(u"完成(3)"_s)->mapRectToScene(named(u"完成(3)"_s)->boundingRect());
    const QRectF preview = named(u"预览"_s)->mapRectToScene(named(u"预览"_s)->boundingRect());
    QVERIFY(preview.right() < ok.left() && ok.right() < size.width()
        && ok.bottom() <= size.height() - 34);
    if (const QString folder = qEnvironmentVariable("VANT_PICKER_PICTURES"); !folder.isEmpty()) {
        QTest::qWait(500); // the eye wants to see all pictures
        QVERIFY(m_ui->view.grabWindow().save(
            folder + u"/picker-%1.png"_s.arg(QLatin1StringView(QTest::currentDataTag()))));
    }
}

QTEST_MAIN(PickerTest)
#include "PickerTest.moc"
