#include "services/share/OMShareView.h"

#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

OMShareView::OMShareView(Shell *shell, Download download, const QUrl &imageUrl,
    std::function<void(int tag)> buttonEventBlock)
    : titleArray {u"微信好友"_s, u"朋友圈"_s, u"QQ好友"_s, u"保存至相册"_s}
    , imageArray {u"icon_share_weixin_normal"_s, u"icon_share_wechatTimeline_normal"_s,
          u"icon_share_qq_normal"_s, u"icon_share_weixin_download"_s}
    , imageUrl(imageUrl)
    , m_shell(shell)
    , m_buttonEventBlock(std::move(buttonEventBlock))
{
    if (download == Download::Hidden) {
        titleArray.removeLast();
        imageArray.removeLast();
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
    if (m_leaving || tag < 0 || tag >= titleArray.size())
        return;
    m_pressed = tag;
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
