#pragma once

#include <QList>
#include <QUrl>

//! What a view does about a navigation of its page: a pure function of the address and where it
//! leads. The navigation itself is always allowed, even when a link has been handed to the system:
//! deliberate.
struct NavigationPolicy
{
    enum class Target {
        MainFrame,
        Subframe,
        NewWindow, //!< the user touched what asked for it
        UnaskedWindow, //!< a script's own idea, of whichever frame: the engine does not tell
    };

    //! Addresses for the system, in order of preference: the first that a program is registered for
    //! is opened. Neither a frame nor a script that nobody touched starts programs by them.
    QList<QUrl> openInSystem;
    //! A link that asks for a window of its own is loaded in the view.
    bool loadInThisView = false;

    static NavigationPolicy decide(
        const QUrl &url, Target target, const QString &customerServiceAccount);

    bool operator==(const NavigationPolicy &) const = default;
};
