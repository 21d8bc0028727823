#pragma once

#include <QString>
#include <QStringList>

#include <optional>

//! One question or notice to the user, shown by AlertView.
struct Alert
{
    enum class Style {
        Dialog, //!< a box in the middle
        FullScreen, //!< a page of text with a close button, for notices
    };

    QString title {};
    QString message {};
    //! From left to right; none gets one named 确定. Not shown in FullScreen.
    QStringList buttons {};
    //! The first text of a line that the user may fill in. Not in FullScreen.
    std::optional<QString> input {};
    //! The caller's own mark.
    int tag = 0;
    //! The button that the back key presses; none: the user has to touch one. FullScreen: always
    //! cancelled.
    std::optional<int> backButton {};
    Style style = Style::Dialog;

    //! The buttons of a question().
    enum Button { Cancel = 0, Confirm = 1 };
    //! A question that is answered by 确定, or by 取消 and the back key.
    static Alert question(const QString &title, const QString &message)
    {
        return {.title = title,
            .message = message,
            .buttons = {QStringLiteral("取消"), QStringLiteral("确定")},
            .backButton = Cancel};
    }
};
