#include "platform/media/BoundedImage.h"
#include "platform/services/DesktopShareSDK.h"
#include "support/NotedUrlOpener.h"
#include "support/Table.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QScopeGuard>
#include <QSemaphore>
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

private:
    using Shared = Table<QSize, QString, QSize>;

private Q_SLOTS:
    // So that the bounds are seen to work by themselves.
    void initTestCase() { QImageReader::setAllocationLimit(0); }

    void readsWithinTheBounds()
    {
        const std::tuple<QSize, int, QSize> rows[] {
            // side: 0 for full size
            {{3000, 2000}, 0, {3000, 2000}},
            {{3000, 2000}, 100, {100, 100}},
            {{12000, 9000}, 0, {0, 0}},
            {{12000, 9000}, 100, {100, 100}},
            {{30000, 9000}, 100, {0, 0}},
        };
        for (const auto &row : rows) {
            QByteArray png = encoded(std::get<0>(row));
            QBuffer buffer(&png);
            QImageReader reader(&buffer);
            const int side = std::get<1>(row);
            const auto scaling = [side](const QSize &) { return QSize(side, side); };
            const QImage image
                = BoundedImage::read(reader, side > 0 ? BoundedImage::Scaling(scaling) : nullptr);
            QCOMPARE(image.size(), std::get<2>(row));
        }
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
        Shared::rows({{"usual", {300, 200}, u"没有安装QQ，图片已复制"_s, {300, 200}},
            {"too large", {12000, 9000}, u"图片无法读取"_s, {0, 0}}});
    }

    void aSharedPictureIsReadBesideTheMainThread()
    {
        const auto [size, message, copied] = Shared::row();
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
        QCOMPARE(told, message);
        QCOMPARE(QGuiApplication::clipboard()->image().size(), copied);
    }
};

QTEST_MAIN(BoundedImageTest)
#include "BoundedImageTest.moc"
