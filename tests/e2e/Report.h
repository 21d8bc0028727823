#pragma once

#include <QJsonArray>
#include <QMap>
#include <QString>

//! How one step of the journey went.
struct StepResult
{
    QString step;
    bool ok = false;
    qint64 ms = 0;
    QString screenshot; //!< file name beside tour.json, empty: none could be taken
    QString detail; //!< what was seen, or what was not
};

//! The file of step results that the tour and the lives of its client write one after the other,
//! complete after every addition, so that it tells how far a run came that was cut short.
class Report
{
public:
    explicit Report(const QString &folder);

    //! Says it on the terminal too. A later word about a step takes the place of an earlier one.
    void add(const StepResult &result);
    //! Whether they went well, by the steps' names.
    QMap<QString, bool> outcomes() const;

private:
    QJsonArray entries() const;

    QString m_filePath;
};
