#pragma once

#include <QThreadPool>

//! Loads what the first screen would otherwise wait for, on threads of its own; waits for them
//! when it is destroyed. The application object lives longer.
class LoadAhead
{
public:
    LoadAhead();

private:
    QThreadPool m_threads;
};
