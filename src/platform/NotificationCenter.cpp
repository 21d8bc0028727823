#include "platform/NotificationCenter.h"

void NotificationCenter::addObserver(const QString &name, QObject *context, Observer observer)
{
    connect(this, &NotificationCenter::posted, context,
        [name, observer = std::move(observer)](const QString &posted, const QVariant &object) {
            if (posted == name)
                observer(object);
        });
}

void NotificationCenter::postNotificationName(const QString &name, const QVariant &object)
{
    Q_EMIT posted(name, object);
}
