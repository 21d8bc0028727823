#include "web/host/PageHost.h"

#include "ui/shell/Shell.h"
#include "web/Logging.h"

using namespace Qt::StringLiterals;

PageHost::PageHost(Shell *shell, MainQueue *mainQueue, LinkHandOver *links,
    NetworkReachabilityManager *reachability, const QString &downloadDirectory,
    PagePermissions *permissions)
    : m_shell(shell)
    , m_mainQueue(mainQueue)
    , m_links(links)
    , m_reachability(reachability)
    , m_downloadDirectory(downloadDirectory)
    , m_permissions(permissions)
{
}

AlertView *PageHost::alertView() const
{
    return m_shell->alertView();
}

void PageHost::close(ViewController *page)
{
    m_shell->navigator()->dismiss(page);
}

void PageHost::downloadKept(const QString &fileName)
{
    m_shell->toast()->showSuccess(u"已下载：%1"_s.arg(fileName));
}

void PageHost::downloadFailed(const QString &fileName)
{
    qCWarning(lcWeb) << "a file was not downloaded:" << fileName;
    m_shell->toast()->showError(u"下载失败"_s);
}
