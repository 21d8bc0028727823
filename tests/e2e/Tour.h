#pragma once

#include "e2e/Report.h"
#include "e2e/TourOptions.h"
#include "e2e/steps/Steps.h"

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
    void live(const TourOptions::Life &life);

    TourOptions m_options;
    Journey m_journey {wholeJourney()};
    Report m_report;
};
