#include "ui/feedback/ProgressHUD.h"

#include <algorithm>

ProgressHUD::ProgressHUD(QObject *parent)
    : QObject(parent)
{
}

void ProgressHUD::show(const QString &text)
{
    m_visible = true;
    m_determinate = false;
    m_text = text;
    Q_EMIT changed();
}

void ProgressHUD::showProgress(const QString &text, double progress)
{
    m_visible = true;
    m_determinate = true;
    m_text = text;
    m_progress = std::clamp(progress, 0.0, 1.0);
    Q_EMIT changed();
}

void ProgressHUD::hide()
{
    if (!m_visible)
        return;
    m_visible = false;
    Q_EMIT changed();
}
