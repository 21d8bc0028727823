#pragma once

#include "login/CommandObserver.h"

#include <QJsonValue>
#include <QStringList>

//! What a command told, in order: "value", "completed", "error 401 text".
struct Told
{
    QStringList events;
    QJsonValue value;

    CommandObserver observer()
    {
        return {[this](const QJsonValue &next) {
                    events << QStringLiteral("value");
                    value = next;
                },
            [this](const CommandError &error) {
                events << QStringLiteral("error %1 %2").arg(error.code).arg(error.msg);
            },
            [this] { events << QStringLiteral("completed"); }};
    }
};
