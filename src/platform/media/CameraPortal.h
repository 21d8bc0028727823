#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

//! The desktop's own question to the user whether a program may use the camera.
class CameraPortal : public QObject
{
    Q_OBJECT

public:
    enum class Answer {
        Granted,
        Refused,
        Forbidden, //!< the desktop lets nobody be asked
        Interrupted, //!< the question went away unanswered
        Missing, //!< this desktop has no such question
    };

    explicit CameraPortal(const QDBusConnection &bus);

    //! Whether the desktop has portals; it may still lack the one for cameras.
    bool isPresent() const;
    //! Asks; the user may take any time. One question at a time: during one, this is Interrupted.
    void accessCamera(std::function<void(Answer)> answer);

private Q_SLOTS:
    void responded(uint response, const QVariantMap &results);

private:
    void call();
    void listenAt(const QString &requestPath);
    void finish(Answer answer);

    QDBusConnection m_bus;
    std::function<void(Answer)> m_answer;
    QString m_requestPath;
    int m_requests = 0;
};
