#pragma once

#include <QString>

//! The number on the program's icon, through the desktop's launcher-entry interface; ignored where
//! there is none.
class ApplicationBadge
{
public:
    explicit ApplicationBadge(const QString &desktopFileName);

    void setNumber(int number);

private:
    QString m_applicationUri;
};
