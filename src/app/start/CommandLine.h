#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <optional>
#include <variant>

//! What the program was started with.
struct CommandLine
{
    QString configFile; //!< null: the defaults alone
    QString profile; //!< null: the user's ordinary folders
    QString cameraFeed; //!< picture or video that stands in for a camera
    bool sandbox = false; //!< start a school platform beside the client
    bool version = false;
    std::optional<QVariantMap> push; //!< a tapped notification's user info
    QUrl url; //!< a callback for the running instance; empty: none

    //! The arguments, the program's name left out, or one line that says what is wrong with them.
    static std::variant<CommandLine, QString> parse(const QStringList &arguments);
};
