#pragma once

#include "app/start/ProfileLock.h"

#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <memory>
#include <optional>

class QLocalServer;
class QTemporaryDir;

//! The one instance of a profile: later starts hand it what they were started with, and end. What
//! they hand over waits until the instance begins to answer.
//!
//! The first has the profile's lock, and leaves there by which socket it is reached: one in the
//! profile's folder, or in a folder of its own where that will not do. Nothing is handed to, or
//! taken from, a process of another user.
class RunningInstance : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        First, //!< no other uses the profile; this one is its instance from now on
        HandedOver, //!< to the instance that runs
        InUse, //!< another uses the profile, and cannot be reached
    };

    //! \a folder: the profile's.
    explicit RunningInstance(const QString &folder);
    ~RunningInstance() override;

    //! Hands over to the instance that runs, if there is one. Waits for it, two seconds at the
    //! most.
    Outcome handOver(const std::optional<QVariantMap> &push, const QUrl &url);

    //! From now on, and for what has waited, the signals come.
    void answer();

Q_SIGNALS:
    //! A later start; what it was started with.
    void pushReceived(const QVariantMap &userInfo);
    void urlReceived(const QUrl &url);
    //! A later start with nothing to hand over: the window is wanted.
    void activated();

private:
    void listen();
    bool send(const QByteArray &message) const;
    void accept();
    void take(const QByteArray &message);

    QString m_folder;
    ProfileLock m_lock;
    std::unique_ptr<QTemporaryDir> m_socketFolder;
    std::unique_ptr<QLocalServer> m_server;
};
