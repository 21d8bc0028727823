#pragma once

#include "e2e/Report.h"
#include "e2e/TourOptions.h"
#include "e2e/steps/Steps.h"

class Driver;
class Wire;
struct DeploymentConfiguration;

//! One run of the client in this process, from its start to its end, with the steps that happen in
//! it.
class Life
{
public:
    explicit Life(const TourOptions &options);

    //! The process's exit code: 0 when the client ended in order, whatever the steps saw.
    int run(int argc, char **argv);

private:
    int live(Wire &wire, const DeploymentConfiguration &deployment);
    void goThrough(Driver &driver);
    StepResult take(const Step &step, Driver &driver);

    TourOptions m_options;
    Journey m_journey {wholeJourney()};
    Report m_report;
};
