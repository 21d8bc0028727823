#pragma once

#include <QString>

//! Why a page is not shown.
struct LoadProblem
{
    //! Of a load that the engine gave up, by its own domain and number.
    static LoadProblem ofEngine(int domain, int code);
    //! Of an answer with this status and nothing in it.
    static LoadProblem ofStatus(int status);
    static LoadProblem noAnswer();
    static LoadProblem diesAgainAndAgain();

    QString text; //!< one line for the user
    bool isOfNetwork = false; //!< so that the network's return may mend it
};
