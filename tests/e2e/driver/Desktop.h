#pragma once

#include <QDir>
#include <QMap>
#include <QStringList>
#include <QUrl>

//! The desktop around the client, as far as a journey needs one: a browser that notes what it is
//! asked to open, the programs that are registered for URLs, and the start of the client by a
//! tapped notification.
class Desktop
{
public:
    explicit Desktop(const QString &profile);

    //! Puts the browser where environment() will find it.
    void furnish() const;
    //! What makes programs use this desktop.
    QMap<QString, QString> environment() const;

    //! The addresses that the browser was asked to open, in order.
    QList<QUrl> opened() const;
    //! Starts whatever is registered for the URL; throws StepFailed when nothing is.
    void follow(const QUrl &url) const;
    //! Starts the client of this profile a second time; throws StepFailed unless it ends well.
    void start(const QStringList &arguments) const;

private:
    QString m_profile;
    QDir m_data;
};
