#include "e2e/Journey.h"

#include "e2e/steps/Steps.h"

#include <algorithm>

using namespace Qt::StringLiterals;

Journey::Journey()
    : m_steps(launchSteps() + loginSteps() + portalSteps() + uploadSteps() + bridgeSteps()
        + deviceSteps() + sessionSteps() + accountSteps())
{
}

const Step *Journey::find(const QString &name) const
{
    const auto found = std::find_if(
        m_steps.begin(), m_steps.end(), [&](const Step &step) { return step.name == name; });
    return found == m_steps.end() ? nullptr : &*found;
}

int Journey::lives() const
{
    return m_steps.constLast().life;
}

QString Journey::pictureName(const Step &step) const
{
    const auto index = find(step.name) - &m_steps.constFirst();
    return u"%1-%2.png"_s.arg(index + 1, 2, 10, QChar(u'0')).arg(step.name);
}

QSet<QString> Journey::withNeeds(const QStringList &names) const
{
    QSet<QString> selected(names.begin(), names.end());
    const bool all = names.isEmpty();
    // Needs stand before those who need them, so that one way back finds them all.
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step) {
        if (all)
            selected << step->name;
        else if (selected.contains(step->name))
            selected.unite(QSet<QString>(step->needs.begin(), step->needs.end()));
    }
    return selected;
}
