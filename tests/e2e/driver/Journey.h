#pragma once

#include "e2e/driver/Step.h"

#include <QList>
#include <QStringList>

class Wire;
struct DeploymentConfiguration;

//! All steps in the order in which they are gone through.
class Journey
{
public:
    //! What comes before the client starts.
    struct Start
    {
        std::function<void(Wire &)> prepare; //!< tells the platform, if anything
        std::function<void(DeploymentConfiguration &)> configure; //!< deploys it otherwise
    };

    // For the chapters: the steps that follow happen in another run of the client.
    void startClient(const Start &start = {});
    Step &step(const QString &name, const QString &need, const std::function<void(Driver &)> &act);

    const QList<Step> &steps() const { return m_steps; }
    const Step *find(const QString &name) const;
    int lives() const { return int(m_starts.size()); }
    const Start &startOf(int life) const { return m_starts.at(life - 1); }
    //! The file name of a step's picture: numbered, so that the pictures stand in the journey's
    //! order.
    QString pictureName(const Step &step) const;

    //! Of these steps and all that lead to them those in one run of the client; of all steps for an
    //! empty list. Names must be known.
    QList<Step> stepsOf(int life, const QStringList &names) const;

private:
    QList<Start> m_starts;
    QList<Step> m_steps;
};
