#pragma once

#include "e2e/driver/Step.h"

#include <QList>
#include <QSet>

//! All steps in the order in which they are gone through.
class Journey
{
public:
    Journey();

    const QList<Step> &steps() const { return m_steps; }
    const Step *find(const QString &name) const;
    int lives() const;
    //! The file name of a step's picture: numbered, so that the pictures stand in the journey's
    //! order.
    QString pictureName(const Step &step) const;

    //! These steps and all that lead to them; all steps for an empty list. Names must be known.
    QSet<QString> withNeeds(const QStringList &names) const;

private:
    QList<Step> m_steps;
};
