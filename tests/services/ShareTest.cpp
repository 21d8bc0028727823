#include "platform/DesktopShareSDK.h"
#include "platform/FolderPhotoLibrary.h"
#include "platform/UrlOpener.h"
#include "services/share/LinkCodeController.h"
#include "services/share/LinkCodeSheet.h"
#include "services/share/ShareForPages.h"
#include "support/PageServer.h"
#include "support/PlatformProcess.h"
#include "ui/FontChooser.h"
#include "ui/UiHarness.h"

#include <ZXing/ReadBarcode.h>

#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_ServicesPlugin)

using namespace Qt::StringLiterals;

namespace {

//! A desktop that has the programs of some schemes.
class NotedUrlOpener : public UrlOpener
{
public:
    bool canOpenURL(const QUrl &url) const override { return schemes.contains(url.scheme()); }
    bool openURL(const QUrl &url) override
    {
        opened << url;
        return canOpenURL(url);
    }

    QStringList schemes {u"http"_s};
    QList<QUrl> opened;
};

QByteArray pngOf(const QColor &color)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(color);
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    image.save(&png, "PNG");
    return png.data();
}

QString readCode(const QImage &screen)
{
    const QImage grey = screen.convertToFormat(QImage::Format_Grayscale8);
    const ZXing::ImageView view(grey.constBits(), grey.width(), grey.height(),
        ZXing::ImageFormat::Lum, int(grey.bytesPerLine()));
    return QString::fromStdWString(ZXing::ReadBarcode(view).text());
}

const QString failed = QStringLiteral("分享失败：%1");

}

//! Sharing as a page starts it and a finger ends it, in a window.
class ShareTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    PlatformProcess m_sandbox;
    PageServer m_pictures;
    NotedUrlOpener m_opener;
    QNetworkAccessManager m_network;
    std::unique_ptr<FolderPhotoLibrary> m_album;
    std::unique_ptr<UiHarness> m_ui;
    std::unique_ptr<LinkCodeSheet> m_sheet;
    std::unique_ptr<DesktopShareSDK> m_sdk;
    std::unique_ptr<ShareForPages> m_share;

    QString toast()
    {
        return m_ui->shell.toast()->isVisible() ? m_ui->shell.toast()->text() : QString();
    }

    void press(const QString &button)
    {
        TRY_VERIFY(m_ui->itemWithText(button));
        QQuickItem *item = m_ui->itemWithText(button);
        // The panel still moves.
        const auto isInside = [&] {
            return item->mapRectToScene(item->boundingRect()).bottom() <= m_ui->view.height();
        };
        TRY_VERIFY(isInside());
        m_ui->click(item);
    }

    //! For a person to look at, where a folder is named for that.
    void photograph(const QString &name)
    {
        const QString folder = qEnvironmentVariable("VANT_SHOTS");
        if (!folder.isEmpty())
            m_ui->view.grabWindow().save(folder + u"/share-"_s + name + u".png"_s);
    }

private Q_SLOTS:
    void initTestCase()
    {
        FontChooser::apply();
        m_pictures.setPage("/p.png", pngOf(Qt::red), "image/png");
        m_pictures.setPage("/broken.png", "<html>", "image/png");
    }

    void init()
    {
        m_opener = {};
        m_album = std::make_unique<FolderPhotoLibrary>(m_folder.filePath(u"album"_s));
        m_ui = std::make_unique<UiHarness>();
        m_sheet = std::make_unique<LinkCodeSheet>(&m_ui->shell);
        m_sdk = std::make_unique<DesktopShareSDK>(
            &m_opener, m_album.get(), m_sheet.get(), m_sandbox.address() + u"qq/share"_s);
        m_share = std::make_unique<ShareForPages>(&m_ui->shell, m_sdk.get(), &m_network);
        m_ui->showRootView();
    }

    void cleanup()
    {
        m_share.reset();
        m_ui.reset();
        m_sdk.reset();
    }

    void aLinkToQQOpensTheSharePage()
    {
        m_share->linkShareAction(
            u"http://h/?a=1&b=二#三"_s, u"标题 & \"<b>\""_s, u"正文+%"_s, u"http://h/图.png"_s);
        TRY_VERIFY(m_ui->itemWithText(u"QQ好友"_s));
        QVERIFY(!m_ui->itemWithText(u"保存至相册"_s));
        photograph(u"link"_s);
        press(u"QQ好友"_s);
        TRY_COMPARE(m_opener.opened.size(), 1);
        TRY_VERIFY(!m_ui->shell.navigator()->topViewController());
        // Nobody knows how it ends in the browser.
        QCOMPARE(toast(), QString());

        m_sandbox.takeRequests();
        std::unique_ptr<QNetworkReply> reply(
            m_network.get(QNetworkRequest(m_opener.opened.constFirst())));
        TRY_VERIFY(reply->isFinished());
        QVERIFY(reply->readAll().contains("标题 &amp; &quot;&lt;b&gt;&quot;"));
        const TracedRequest request = m_sandbox.takeRequests().constFirst();
        QCOMPARE(request.path, u"/qq/share"_s);
        QCOMPARE(request.value(u"url"_s), u"http://h/?a=1&b=二#三"_s);
        QCOMPARE(request.value(u"summary"_s), u"正文+%"_s);
        QCOMPARE(request.value(u"pics"_s), u"http://h/图.png"_s);
    }

    void aLinkToWeChatIsACodeToScan_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("hint");
        QTest::newRow("friends") << u"微信好友"_s << u"用微信扫一扫，分享给好友"_s;
        QTest::newRow("timeline") << u"朋友圈"_s << u"用微信扫一扫，分享到朋友圈"_s;
    }

    void aLinkToWeChatIsACodeToScan()
    {
        QFETCH(const QString, button);
        QFETCH(const QString, hint);
        const QString link = u"https://portal.vant.example/文章?id=7&from=share"_s;
        const QString encoded = QString::fromLatin1(QUrl(link).toEncoded());
        m_share->linkShareAction(link, u"校园开放日活动通知"_s, {}, {});
        press(button);
        TRY_VERIFY(m_ui->itemWithText(hint));
        TRY_COMPARE(readCode(m_ui->view.grabWindow()), encoded);
        photograph(u"code"_s);
        QCOMPARE(toast(), QString());
        press(u"复制链接"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), encoded);
        m_ui->shell.back();
        TRY_VERIFY(!m_ui->shell.navigator()->topViewController());
    }

    void aPicture_data()
    {
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("programs");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QString>("toast");
        const QStringList both {u"weixin"_s, u"mqq"_s};
        const QString good = u"/p.png"_s;
        QTest::newRow("album") << good << u"保存至相册"_s << both << QString() << u"分享成功！"_s;
        QTest::newRow("friends") << good << u"微信好友"_s << both << u"weixin:"_s << QString();
        QTest::newRow("timeline") << good << u"朋友圈"_s << both << u"weixin:"_s << QString();
        QTest::newRow("QQ") << good << u"QQ好友"_s << both << u"mqq:"_s << QString();
        QTest::newRow("no program") << good << u"QQ好友"_s << QStringList {} << QString()
                                    << failed.arg(u"没有安装QQ，图片已复制"_s);
        QTest::newRow("not loaded") << u"/none.png"_s << u"微信好友"_s << both << QString()
                                    << failed.arg(u"没有可分享的图片或链接"_s);
        QTest::newRow("not loaded, album") << u"/none.png"_s << u"保存至相册"_s << both << QString()
                                           << failed.arg(u"没有可保存的图片"_s);
        QTest::newRow("no picture") << u"/broken.png"_s << u"保存至相册"_s << both << QString()
                                    << failed.arg(u"图片无法保存"_s);
    }

    void aPicture()
    {
        QFETCH(const QString, picture);
        QFETCH(const QString, button);
        QFETCH(const QString, opened);
        QFETCH(const QString, toast);
        QFETCH(const QStringList, programs);
        m_opener.schemes = programs;
        QGuiApplication::clipboard()->clear();
        const qsizetype before = m_pictures.requests().size();
        m_share->action(QUrl(m_pictures.url(picture.toUtf8())));
        TRY_COMPARE(m_pictures.requests().size(), before + 1);
        TRY_COMPARE(m_network.findChildren<QNetworkReply *>().size(), 0);
        TRY_VERIFY(m_ui->itemWithText(u"保存至相册"_s));
        photograph(u"picture"_s);
        press(button);
        if (!opened.isEmpty()) {
            TRY_COMPARE(m_opener.opened.size(), 1);
            QVERIFY(m_opener.opened.constFirst().toString().startsWith(opened));
        }
        if (button != u"保存至相册" && picture == u"/p.png")
            TRY_COMPARE(QGuiApplication::clipboard()->image().pixelColor(1, 1), QColor(Qt::red));
        TRY_COMPARE(this->toast(), toast);
        photograph(u"toast"_s);
        if (toast == u"分享成功！") {
            const QDir album(m_folder.filePath(u"album"_s));
            QFile saved(album.filePath(album.entryList({u"*.png"_s}).value(0)));
            QVERIFY(saved.open(QIODevice::ReadOnly));
            QCOMPARE(saved.readAll(), pngOf(Qt::red));
        }
    }

    void whatCannotBeShared_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("message");
        QTest::newRow("nothing") << QString() << QString() << u"分享参数为空"_s;
        QTest::newRow("a title alone") << u"标题"_s << QString() << u"没有可分享的图片或链接"_s;
        QTest::newRow("too long") << u"标题"_s << (u"http://h/"_s + QString(4000, u'x'))
                                  << u"链接无法生成二维码"_s;
    }

    void whatCannotBeShared()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, url);
        QFETCH(const QString, message);
        m_share->linkShareAction(url, title, {}, {});
        press(u"微信好友"_s);
        TRY_COMPARE(toast(), failed.arg(message));
    }

    //! The screen beneath stays visible, takes no input, and gets it back.
    void thePanelStandsOverTheScreen()
    {
        ViewController home;
        Navigator *navigator = m_ui->shell.navigator();
        navigator->setRootViewController(u"Sample"_s, &home);
        PresentedScreen *screen = navigator->screens()->at(0);
        m_share->action({});
        m_share->action({}); // in the place of the first
        TRY_VERIFY(screen->behind());
        QVERIFY(!screen->covered());
        m_ui->shell.back();
        TRY_COMPARE(navigator->topViewController(), &home);
        TRY_VERIFY(!screen->behind());
        TRY_VERIFY(!m_ui->itemWithText(u"微信好友"_s));
        m_share->action({});
        press(u"关闭"_s);
        TRY_COMPARE(navigator->topViewController(), &home);
        m_ui.reset();
    }
};

QTEST_MAIN(ShareTest)
#include "ShareTest.moc"
