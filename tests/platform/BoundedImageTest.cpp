#include "platform/media/BoundedImage.h"
#include "platform/services/DesktopShareSDK.h"
#include "support/NotedUrlOpener.h"
#include "support/Patience.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QScopeGuard>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

//! Some kilobytes, whatever its size.
QByteArray encoded(const QSize &size)
{
    QImage picture(size, QImage::Format_Mono);
    picture.fill(1);
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly) || !picture.save(&buffer, "PNG"))
        qFatal("no picture of %d x %d", size.width(), size.height());
    return buffer.data();
}

}

//! Pictures that unpack to more than memory should hold, and the one that is shared.
class BoundedImageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // So that the bounds are seen to work by themselves.
    void initTestCase() { QImageReader::setAllocationLimit(0); }

    void readsWithinTheBounds_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("side"); // 0: in full size
        QTest::addColumn<QSize>("read");
        QTest::newRow("whole") << QSize(3000, 2000) << 0 << QSize(3000, 2000);
        QTest::newRow("smaller") << QSize(3000, 2000) << 100 << QSize(100, 100);
        QTest::newRow("too large") << QSize(12000, 9000) << 0 << QSize();
        QTest::newRow("large, made small") << QSize(12000, 9000) << 100 << QSize(100, 100);
        QTest::newRow("too large to be made small") << QSize(30000, 9000) << 100 << QSize();
    }

    void readsWithinTheBounds()
    {
        QFETCH(const QSize, size);
        QFETCH(const int, side);
        QByteArray png = encoded(size);
        QBuffer buffer(&png);
        QImageReader reader(&buffer);
        const BoundedImage::Scaling scaling = [side](const QSize &) { return QSize(side, side); };
        const QImage image = BoundedImage::read(reader, side > 0 ? scaling : nullptr);
        QTEST(image.isNull() ? QSize() : image.size(), "read");
    }

    void theToolkitHoldsTheSameBound()
    {
        BoundedImage::limitToolkit();
        QVERIFY(QImage::fromData(encoded({12000, 9000})).isNull());
        QVERIFY(!QImage::fromData(encoded({9000, 9000})).isNull());
        QImageReader::setAllocationLimit(0);
    }

    void aSharedPictureIsReadBesideTheMainThread_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("message");
        QTest::newRow("usual") << QSize(300, 200) << u"没有安装QQ，图片已复制"_s;
        QTest::newRow("too large") << QSize(12000, 9000) << u"图片无法读取"_s;
    }

    void aSharedPictureIsReadBesideTheMainThread()
    {
        QFETCH(const QSize, size);
        QThreadPool *pool = QThreadPool::globalInstance();
        pool->setMaxThreadCount(1);
        QSemaphore gate;
        pool->start([&gate] { gate.acquire(); });
        const auto opensInTheEnd = qScopeGuard([&] {
            gate.release();
            pool->waitForDone();
        });
        NotedUrlOpener opener;
        DesktopShareSDK sdk(&opener, nullptr, nullptr, {});
        ShareContent content;
        content.image = encoded(size);
        QString told;
        QGuiApplication::clipboard()->clear();
        sdk.share(ShareSDK::Platform::QQFriend, content,
            [&told](ShareSDK::State, const QString &message) { told = message; });
        // The share begins, and would have its answer, too.
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents();
        QVERIFY(told.isNull());
        gate.release();
        TRY_VERIFY(!told.isNull());
        QTEST(told, "message");
        const bool isUsual = size.width() == 300;
        QCOMPARE(QGuiApplication::clipboard()->image().size(), isUsual ? size : QSize(0, 0));
    }
};

QTEST_MAIN(BoundedImageTest)
#include "BoundedImageTest.moc"
