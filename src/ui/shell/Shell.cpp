#include "ui/shell/Shell.h"

Shell::Shell(MainQueue &queue, QObject *parent)
    : QObject(parent)
    , m_toast(queue)
{
}

bool Shell::back()
{
    if (m_progressHUD.isVisible())
        return true;
    if (m_actionSheet.cancel())
        return true;
    if (m_alertView.isVisible()) {
        m_alertView.cancel();
        return true;
    }
    return m_navigator.back();
}
