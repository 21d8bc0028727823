#include "platform/time/NotificationCenter.h"

#include <algorithm>

void NotificationCenter::addObserver(const QString &name, QObject *context, Observer observer)
{
    connect(this, &NotificationCenter::posted, context,
        [name, observer = std::move(observer)](const QString &posted, const QVariant &object) {
            if (posted == name)
                observer(object);
        });
    m_contexts.insert(name, context);
    Q_EMIT observerAdded(name);
}

bool NotificationCenter::isObserved(const QString &name) const
{
    const auto [begin, end] = m_contexts.equal_range(name);
    return std::any_of(begin, end, [](const QPointer<QObject> &context) { return !!context; });
}

void NotificationCenter::postNotificationName(const QString &name, const QVariant &object)
{
    Q_EMIT posted(name, object);
}
