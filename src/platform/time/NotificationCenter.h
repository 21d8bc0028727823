#pragma once

#include <QMultiHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <functional>

//! In-process notifications by name: whoever posts need not know who listens.
//! One for the process; observers are called at once, in the order they were added.
class NotificationCenter : public QObject
{
    Q_OBJECT

public:
    using Observer = std::function<void(const QVariant &object)>;

    //! Calls the observer for every notification of that name for as long as the context lives.
    void addObserver(const QString &name, QObject *context, Observer observer);
    void postNotificationName(const QString &name, const QVariant &object = {});
    //! Whether anybody observes that name now.
    bool isObserved(const QString &name) const;

Q_SIGNALS:
    void posted(const QString &name, const QVariant &object);
    void observerAdded(const QString &name);

private:
    QMultiHash<QString, QPointer<QObject>> m_contexts;
};
