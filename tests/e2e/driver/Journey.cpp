#include "e2e/driver/Journey.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

void Journey::startClient(const Start &start)
{
    m_starts << start;
}

Step &Journey::step(
    const QString &name, const QString &need, const std::function<void(Driver &)> &act)
{
    Q_ASSERT(need.isEmpty() || find(need));
    m_steps << Step {name, need, lives(), act};
    return m_steps.last();
}

const Step *Journey::find(const QString &name) const
{
    const auto found = std::find_if(
        m_steps.begin(), m_steps.end(), [&](const Step &step) { return step.name == name; });
    return found == m_steps.end() ? nullptr : &*found;
}

QString Journey::pictureName(const Step &step) const
{
    const auto index = find(step.name) - &m_steps.constFirst();
    return u"%1-%2.png"_s.arg(index + 1, 2, 10, QChar(u'0')).arg(step.name);
}

QList<Step> Journey::stepsOf(int life, const QStringList &names) const
{
    QSet<QString> wanted(names.begin(), names.end());
    // Needs stand before those who need them, so that one way back finds them all.
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step) {
        if (names.isEmpty() || wanted.contains(step->name))
            wanted << step->name << step->need;
    }
    QList<Step> steps = m_steps;
    steps.removeIf(
        [&](const Step &step) { return step.life != life || !wanted.contains(step.name); });
    return steps;
}
