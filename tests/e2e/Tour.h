#pragma once

#include "e2e/Journey.h"
#include "e2e/Report.h"
#include "e2e/TourOptions.h"

//! The whole journey: a school platform, a fresh profile, and the lives of the client one after the
//! other, each in a process of its own, so that quitting and starting again are what they are for a
//! person.
class Tour
{
public:
    explicit Tour(const TourOptions &options);

    //! The process's exit code: 0 when every step was seen to hold.
    int run();

private:
    void live(int number, const QStringList &steps, const TourOptions::Life &life);
    QStringList stepsOf(int life);
    //! A verdict of the tour itself about a step that no life has told of.
    void fail(const QString &step, const QString &reason);
    void add(const StepResult &result);

    TourOptions m_options;
    Journey m_journey;
    QSet<QString> m_selected;
    QStringList m_failed;
    Report m_report;
};
