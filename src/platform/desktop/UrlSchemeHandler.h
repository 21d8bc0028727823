#pragma once

#include <QStringList>

//! Makes this program the one that the desktop starts for a URL scheme, until this object goes.
//! What was registered before counts again then.
class UrlSchemeHandler
{
public:
    //! The scheme's URL becomes the last argument.
    UrlSchemeHandler(const QString &program, const QStringList &arguments);
    ~UrlSchemeHandler();

    //! False when the desktop refuses, which is logged.
    bool registerScheme(const QString &scheme);

private:
    bool writeDesktopFile(const QString &type);

    QString m_program;
    QStringList m_arguments;
    QString m_desktopFile;
    QString m_type; // null: nothing is registered
};
