#pragma once

#include <QLocalServer>
#include <QUrl>
#include <QVariantMap>

#include <optional>

//! The one instance of a profile: later starts hand it what they were started with, and end. What
//! they hand over waits until the instance begins to answer.
class RunningInstance : public QObject
{
    Q_OBJECT

public:
    explicit RunningInstance(const QString &socketPath);

    //! Hands over to the instance that runs; false when none does, and this one is it from now on.
    bool handOver(const std::optional<QVariantMap> &push, const QUrl &url);

    //! From now on, and for what has waited, the signals come.
    void answer();

Q_SIGNALS:
    //! A later start; what it was started with.
    void pushReceived(const QVariantMap &userInfo);
    void urlReceived(const QUrl &url);
    //! A later start with nothing to hand over: the window is wanted.
    void activated();

private:
    void accept();
    void take(const QByteArray &message);

    QString m_socketPath;
    QLocalServer m_server;
};
