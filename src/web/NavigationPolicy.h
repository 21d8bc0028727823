#pragma once

#include <QList>
#include <QUrl>

//! What the home view does about a navigation: a pure function of the address and the frame.
//! The navigation itself is always allowed, even when a link has been handed to the system:
//! deliberate.
struct NavigationPolicy
{
    enum class TargetFrame { None, Some };

    //! Addresses for the system, in order of preference: the first that a program is registered for
    //! is opened.
    QList<QUrl> openInSystem;
    //! A link that asks for a window of its own is loaded in the view.
    bool loadInThisView = false;

    static NavigationPolicy decide(
        const QUrl &url, TargetFrame target, const QString &customerServiceAccount);

    bool operator==(const NavigationPolicy &) const = default;
};
