#pragma once

#include "ui/feedback/ProgressHUD.h"

#include <utility>

//! One piece of work at a time behind the progress indicator, which goes with this object: a screen
//! that dies with its work under way leaves no indicator behind.
class ProgressWork
{
public:
    explicit ProgressWork(ProgressHUD *indicator)
        : m_indicator(indicator)
    {
    }
    ~ProgressWork() { end(); }
    Q_DISABLE_COPY_MOVE(ProgressWork)

    bool isRunning() const { return m_isRunning; }
    void begin(const QString &text)
    {
        m_isRunning = true;
        m_indicator->show(text);
    }
    void end()
    {
        if (std::exchange(m_isRunning, false))
            m_indicator->hide();
    }

private:
    ProgressHUD *m_indicator;
    bool m_isRunning = false;
};
