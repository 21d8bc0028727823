#include "ui/feedback/ActionSheet.h"

#include <utility>

ActionSheet::ActionSheet(QObject *parent)
    : QObject(parent)
{
}

void ActionSheet::show(const QString &title, const QString &message, const QStringList &actions,
    const QString &cancelTitle, Answer answer)
{
    cancel();
    m_visible = true;
    m_title = title;
    m_message = message;
    m_actions = actions;
    m_cancelTitle = cancelTitle;
    m_answer = std::move(answer);
    Q_EMIT changed();
}

void ActionSheet::choose(int actionIndex)
{
    if (m_visible && actionIndex >= 0 && actionIndex < m_actions.size())
        finish(actionIndex);
}

bool ActionSheet::cancel()
{
    if (!m_visible)
        return false;
    finish(cancelled);
    return true;
}

void ActionSheet::finish(int actionIndex)
{
    m_visible = false;
    const Answer answer = std::exchange(m_answer, {});
    Q_EMIT changed();
    if (answer)
        answer(actionIndex);
}
