#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class Driver;
class Wire;
struct DeploymentConfiguration;

//! One thing that a person does with the client, and what must be seen to come of it.
struct Step
{
    QString name;
    QStringList needs; //!< the steps that lead to where this one begins
    int life; //!< in which run of the client it happens, from 1: each ends with the program, the
              //!< profile stays
    std::function<void(Driver &)> act; //!< throws StepFailed
    std::function<void(Wire &)> prepare
        = {}; //!< what the platform is told before the client starts
    std::function<void(DeploymentConfiguration &)> configure
        = {}; //!< how the client is deployed in that run

    bool endsProgram = false; //!< what must be seen is that the program ends within it

    //! Null when none of its needs is among these.
    QString firstNeedIn(const QStringList &names) const;
};
