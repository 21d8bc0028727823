#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>
#include <optional>

//! What the home container asks of the application that made it.
class STHomeViewControllerDelegate
{
public:
    virtual ~STHomeViewControllerDelegate() = default;

    //! An address waiting to be opened from outside; taking it clears it. Null: none.
    virtual QString takeUrlStr() = 0;
    //! A tapped notification that came before there was a home container, or while nobody was
    //! signed in, once.
    virtual std::optional<QVariantMap> takePushDictionary() = 0;
    //! A notification that the user has not answered: it waits for the same user's next login.
    virtual void keepNotification(const QVariantMap &userInfo) = 0;
    //! Logs in with the stored token, then calls back once; never when that fails.
    virtual void backGroundloginInWithRefresh(bool refresh, std::function<void()> success) = 0;
    //! Starts the push service again.
    virtual void bindGeTuiAgain() = 0;
};
