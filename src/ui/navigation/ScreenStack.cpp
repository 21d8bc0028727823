#include "ui/navigation/ScreenStack.h"

#include <algorithm>

ScreenStack::ScreenStack(QObject *parent)
    : QAbstractListModel(parent)
{
}

ScreenStack::~ScreenStack() = default;

int ScreenStack::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ScreenStack::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != ScreenRole)
        return {};
    return QVariant::fromValue(at(index.row()));
}

QHash<int, QByteArray> ScreenStack::roleNames() const
{
    return {{ScreenRole, "screen"}};
}

PresentedScreen *ScreenStack::insert(int row, std::unique_ptr<PresentedScreen> screen)
{
    PresentedScreen *added = screen.get();
    connect(added->controller(), &QObject::destroyed, added, [this, added] { remove(added); });
    beginInsertRows({}, row, row);
    m_screens.insert(m_screens.begin() + row, std::move(screen));
    endInsertRows();
    return added;
}

void ScreenStack::remove(PresentedScreen *screen)
{
    const int row = rowOf(screen);
    if (row < 0)
        return;
    beginRemoveRows({}, row, row);
    // The view goes in its own time and may still look at the screen until then.
    PresentedScreen *leaving = m_screens[size_t(row)].release();
    m_screens.erase(m_screens.begin() + row);
    endRemoveRows();
    leaving->deleteLater();
    Q_EMIT removed(leaving, row);
}

void ScreenStack::end(int firstRow)
{
    while (count() > firstRow) {
        beginRemoveRows({}, count() - 1, count() - 1);
        const std::unique_ptr<PresentedScreen> screen = std::move(m_screens.back());
        m_screens.pop_back();
        endRemoveRows();
        if (ViewController *controller = screen->controller(); controller && !controller->parent())
            delete controller;
    }
}

PresentedScreen *ScreenStack::find(const QString &name, const ViewController *controller) const
{
    const auto it = std::find_if(m_screens.begin(), m_screens.end(), [&](const auto &screen) {
        return screen->name() == name && screen->controller() == controller;
    });
    return it == m_screens.end() ? nullptr : it->get();
}

int ScreenStack::rowOf(const PresentedScreen *screen) const
{
    const auto it = std::find_if(m_screens.begin(), m_screens.end(),
        [screen](const auto &one) { return one.get() == screen; });
    return it == m_screens.end() ? -1 : int(it - m_screens.begin());
}
