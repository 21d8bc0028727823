#pragma once

#include "platform/time/MainQueue.h"

#include <QObject>

//! Does a piece of work once, as soon as the user has let the program alone for a while: for work
//! that would hold up a key.
class InputPause : public QObject
{
public:
    //! How long there is no key, click or touch before the work is done, at least.
    static constexpr std::chrono::seconds length {1};

    explicit InputPause(MainQueue *mainQueue);

    //! Waits from now on.
    void await(std::function<void()> work);

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void look();

    MainQueue *m_mainQueue;
    std::unique_ptr<Repetition> m_looks;
    std::function<void()> m_work;
    bool m_hadInput = false;
};
