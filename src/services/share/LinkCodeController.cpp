#include "services/share/LinkCodeController.h"

#include "services/Logging.h"
#include "ui/shell/Shell.h"

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

using namespace Qt::StringLiterals;

namespace {

constexpr int quietZone = 4;

QImage codeOf(const QByteArray &text)
{
    try {
        const ZXing::BitMatrix modules = ZXing::MultiFormatWriter(ZXing::BarcodeFormat::QRCode)
                                             .setMargin(quietZone)
                                             .encode(text.toStdString(), 0, 0);
        QImage image(modules.width(), modules.height(), QImage::Format_Grayscale8);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                image.scanLine(y)[x] = modules.get(x, y) ? 0 : 255;
        return image;
    } catch (const std::exception &error) { // how the library says that the text is too long
        qCInfo(lcServices) << "no code for a link:" << error.what();
        return {};
    }
}

QUrl asUrl(const QImage &image)
{
    if (image.isNull())
        return {};
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    image.save(&png, "PNG");
    return QUrl(u"data:image/png;base64,"_s + QString::fromLatin1(png.data().toBase64()));
}

}

LinkCodeController::LinkCodeController(
    Shell *shell, const QString &title, const QString &hint, const QString &link)
    : m_shell(shell)
    , m_hint(hint)
    , m_link(QString::fromLatin1(QUrl(link).toEncoded()))
    , m_code(asUrl(codeOf(m_link.toLatin1())))
{
    setTitle(title);
}

void LinkCodeController::copyLink()
{
    QGuiApplication::clipboard()->setText(m_link);
    m_shell->toast()->showSuccess(u"链接已复制"_s);
}

void LinkCodeController::dismiss()
{
    m_shell->navigator()->dismiss(this);
}
