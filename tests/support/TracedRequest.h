#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

//! A request as the school platform received it.
struct TracedRequest
{
    QString method;
    QString host; //!< the address it came to: "127.0.0.1:41234"
    QString path;
    QByteArray query; //!< as it was on the wire
    QMap<QString, QString> headers; //!< by lower-case name
    QByteArray body; //!< of a form only
    int status = 0; //!< of the answer
    qint64 bodySize = 0;
    QString peer; //!< the connection it came by

    static TracedRequest fromJson(const QJsonObject &entry);
    //! The query's or the form's value, decoded; null when absent.
    QString value(const QString &name) const;
};
