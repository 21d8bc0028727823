#pragma once

#include "e2e/StepResult.h"

#include <QList>

//! A file of step results, complete after every addition, so that it tells how far a run came that
//! was cut short.
class Report
{
public:
    explicit Report(const QString &filePath);

    void add(const StepResult &result);
    //! The results in a file; none when there is no such file.
    static QList<StepResult> read(const QString &filePath);

    bool allOk() const;

private:
    QString m_filePath;
    QList<StepResult> m_results;
};
