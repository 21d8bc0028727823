#include "services/share/LinkCodeSheet.h"

#include "services/share/LinkCodeController.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

LinkCodeSheet::LinkCodeSheet(Shell *shell)
    : m_shell(shell)
{
}

bool LinkCodeSheet::showLink(ShareSDK::Platform platform, const QString &title, const QString &link)
{
    const QString hint = platform == ShareSDK::Platform::WeChatTimeline
        ? u"用微信扫一扫，分享到朋友圈"_s
        : u"用微信扫一扫，分享给好友"_s;
    auto sheet = std::make_unique<LinkCodeController>(m_shell, title, hint, link);
    if (sheet->code().isEmpty())
        return false;
    const QString name = u"LinkCodeScreen"_s;
    m_shell->navigator()->registerScreen(
        name, QUrl(u"qrc:/qt/qml/Vant/Services/LinkCodeScreen.qml"_s));
    if (!m_shell->navigator()->present(name, sheet.get()))
        return false;
    sheet.release(); // the navigator's now
    return true;
}
