#include "ui/feedback/ProgressHUD.h"

ProgressHUD::ProgressHUD(QObject *parent)
    : QObject(parent)
{
}

void ProgressHUD::show(const QString &text)
{
    m_visible = true;
    m_text = text;
    Q_EMIT changed();
}

void ProgressHUD::hide()
{
    if (!m_visible)
        return;
    m_visible = false;
    Q_EMIT changed();
}
