#pragma once

#include <QJsonValue>
#include <QString>

#include <functional>

//! Why a command failed: the server's or the transport's number, and the text to show ("msg").
struct CommandError
{
    qint64 code = 0;
    QString msg;

    bool operator==(const CommandError &) const = default;
};

//! Who listens to a command: at most one value, then exactly one of completed and error, on the
//! main thread, never from inside the call that started the command. What is left empty is not
//! told.
struct CommandObserver
{
    std::function<void(const QJsonValue &value)> next;
    std::function<void(const CommandError &error)> error;
    std::function<void()> completed;

    void sendNext(const QJsonValue &value) const
    {
        if (next)
            next(value);
    }
    void sendError(const CommandError &reason) const
    {
        if (error)
            error(reason);
    }
    void sendCompleted() const
    {
        if (completed)
            completed();
    }
};
