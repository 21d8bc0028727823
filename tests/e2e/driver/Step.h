#pragma once

#include <QString>

#include <functional>

class Driver;

//! One thing that a person does with the client, and what must be seen to come of it.
struct Step
{
    QString name;
    QString need; //!< the step that leads to where this one begins, if any does
    int life; //!< in which run of the client it happens, from 1: each ends with the program, the
              //!< profile stays
    std::function<void(Driver &)> act; //!< throws StepFailed
    bool endsProgram = false; //!< what must be seen is that the program ends within it
};
