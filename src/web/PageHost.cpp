#include "web/PageHost.h"

#include "ui/Shell.h"
#include "web/Logging.h"

using namespace Qt::StringLiterals;

namespace {

const QString accept = QStringLiteral("确定");
const QString refuse = QStringLiteral("取消");

}

PageHost::PageHost(Shell *shell, const QString &downloadDirectory)
    : m_shell(shell)
    , m_downloadDirectory(downloadDirectory)
{
}

int PageHost::showAlert(const QString &message)
{
    return show({.message = message, .buttons = {accept}});
}

int PageHost::showConfirm(const QString &message)
{
    return show({.message = message, .buttons = {refuse, accept}});
}

int PageHost::showPrompt(const QString &message, const QString &defaultText)
{
    return show({.message = message, .buttons = {refuse, accept}, .input = defaultText});
}

int PageHost::show(const Alert &alert)
{
    const int id = ++m_lastDialog;
    const int accepting = int(alert.buttons.size()) - 1;
    m_shell->alertView()->ask(alert, [this, id, accepting](int button, const QString &input) {
        Q_EMIT dialogAnswered(id, button == accepting, input);
    });
    return id;
}

void PageHost::close(ViewController *page)
{
    m_shell->navigator()->dismiss(page);
}

void PageHost::downloadEnded(const QString &fileName, bool completed)
{
    if (completed) {
        m_shell->toast()->showSuccess(u"已下载：%1"_s.arg(fileName));
        return;
    }
    qCWarning(lcWeb) << "a file was not downloaded:" << fileName;
    m_shell->toast()->showError(u"下载失败"_s);
}
