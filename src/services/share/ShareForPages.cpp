#include "services/share/ShareForPages.h"

#include "model/StringFormat.h"
#include "platform/http/PictureDownload.h"
#include "services/Logging.h"
#include "services/share/OMShareSDKTool.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPicture = 20 * 1024 * 1024;

}

ShareForPages::ShareForPages(Shell *shell, ShareSDK *sdk, HTTPNetwork *network)
    : m_shell(shell)
    , m_sdk(sdk)
    , m_network(network)
{
}

void ShareForPages::action(const QUrl &imageUrl)
{
    auto image = std::make_shared<QByteArray>();
    showPanel(OMShareView::Download::Offered, imageUrl,
        [this, imageUrl, image](ShareSDK::Platform platform) {
            OMShareSDKTool::shareAcitonWithImage(*m_sdk, *image, imageUrl.toString(),
                u"分享的title"_s, {}, {}, platform, ShareContent::Type::Image,
                [self = QPointer(this)](ShareSDK::State state, const QString &message) {
                    if (self)
                        self->showResult(state, message);
                });
        });
    load(imageUrl, image);
}

void ShareForPages::load(const QUrl &url, const std::shared_ptr<QByteArray> &image)
{
    HTTPSessionManager session = PictureDownload::session(m_network);
    session.setMaximumBodySize(largestPicture);
    HTTPTask *download = session.GET(
        url.toString(QUrl::FullyEncoded), {},
        [image](const HTTPResponse &response) { *image = response.body; },
        [](const HTTPResponse &, const HTTPError &error) {
            qCWarning(lcServices) << "the picture to share did not come:" << error.description;
        });
    // Chosen or not, it is of no more use.
    connect(m_panel, &QObject::destroyed, download, &HTTPTask::cancel);
}

void ShareForPages::linkShareAction(
    const QString &url, const QString &title, const QString &content, const QString &imageUrl)
{
    showPanel(
        OMShareView::Download::Hidden, QUrl(imageUrl), [=, this](ShareSDK::Platform platform) {
            OMShareSDKTool::shareAcitonWithImage(*m_sdk, {}, imageUrl, title, content, url,
                platform, ShareContent::Type::WebPage,
                [self = QPointer(this)](ShareSDK::State state, const QString &message) {
                    if (self)
                        self->showResult(state, message);
                });
        });
}

void ShareForPages::showPanel(OMShareView::Download download, const QUrl &imageUrl, Share share)
{
    if (m_panel)
        m_panel->left();
    m_panel = new OMShareView(m_shell, download, imageUrl, std::move(share));
    m_panel->show();
}

void ShareForPages::showResult(ShareSDK::State state, const QString &message)
{
    if (state == ShareSDK::State::Success)
        m_shell->toast()->showSuccess(u"分享成功！"_s);
    else if (state == ShareSDK::State::Failure)
        m_shell->toast()->showError(StringFormat::format(u"分享失败：%@"_s, message));
}
