#pragma once

#include <QJsonObject>
#include <QString>

//! How one step of the journey went, as tour.json tells it.
struct StepResult
{
    QString step;
    bool ok = false;
    qint64 ms = 0;
    QString screenshot; //!< file name beside tour.json, empty: none could be taken
    QString detail; //!< what was seen, or what was not

    QJsonObject toJson() const;
    //! As one line on the terminal.
    void print() const;
    static StepResult fromJson(const QJsonObject &entry);
};
