#pragma once

#include <QString>

//! Thrown by whatever was awaited and did not come; ends the step.
struct StepFailed
{
    QString reason;
};
