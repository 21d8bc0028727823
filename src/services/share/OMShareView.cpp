#include "services/share/OMShareView.h"

#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

namespace {

struct Button
{
    ShareSDK::Platform target;
    QString title;
    QString image;
};

const QList<Button> &buttons()
{
    using Target = ShareSDK::Platform;
    static const QList<Button> all {
        {Target::WeChatSession, u"微信好友"_s, u"icon_share_weixin_normal"_s},
        {Target::WeChatTimeline, u"朋友圈"_s, u"icon_share_wechatTimeline_normal"_s},
        {Target::QQFriend, u"QQ好友"_s, u"icon_share_qq_normal"_s},
        {Target::Album, u"保存至相册"_s, u"icon_share_weixin_download"_s},
    };
    return all;
}

}

OMShareView::OMShareView(Shell *shell, Download download, const QUrl &imageUrl,
    std::function<void(ShareSDK::Platform target)> buttonEventBlock)
    : imageUrl(imageUrl)
    , m_shell(shell)
    , m_buttonEventBlock(std::move(buttonEventBlock))
{
    for (const Button &button : buttons()) {
        if (button.target == ShareSDK::Platform::Album && download == Download::Hidden)
            continue;
        m_targets << button.target;
        titleArray << button.title;
        imageArray << button.image;
    }
}

void OMShareView::show()
{
    const QString name = u"OMShareScreen"_s;
    m_shell->navigator()->registerScreen(
        name, QUrl(u"qrc:/qt/qml/Vant/Services/OMShareScreen.qml"_s));
    m_shell->navigator()->present(name, this);
}

void OMShareView::dismiss()
{
    if (m_leaving)
        return;
    m_leaving = true;
    Q_EMIT leavingChanged();
}

void OMShareView::buttonClicked(int tag)
{
    if (m_leaving || tag < 0 || tag >= m_targets.size())
        return;
    m_pressed = m_targets.at(tag);
    dismiss();
}

void OMShareView::left()
{
    m_shell->navigator()->dismiss(this);
    if (const auto pressed = std::exchange(m_pressed, {}))
        m_buttonEventBlock(*pressed);
}

bool OMShareView::handleBack()
{
    dismiss();
    return true;
}
