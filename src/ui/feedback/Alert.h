#pragma once

#include <QString>
#include <QStringList>

#include <optional>

//! One question or notice to the user.
struct Alert
{
    enum class Style {
        Dialog, //!< a box in the middle
        FullScreen, //!< a page of text with a close button, for notices
    };

    static inline const QString confirm = QStringLiteral("确定");
    static inline const QString cancel = QStringLiteral("取消");
    //! The buttons of a question, and their positions.
    static QStringList cancelOrConfirm() { return {cancel, confirm}; }
    static constexpr int cancelButton = 0;
    static constexpr int confirmButton = 1;

    QString title {};
    QString message {};
    //! From left to right; none gets one to confirm. Not shown in FullScreen.
    QStringList buttons {};
    //! The first text of a line that the user may fill in. Not in FullScreen.
    std::optional<QString> input {};
    //! Names the line where the message does not.
    QString inputName {};
    //! The first text of a second line below it, whose content is hidden.
    std::optional<QString> password {};
    //! Colours to choose from, each a text for the line of input.
    QStringList colours {};
    //! The caller's own mark.
    int tag = 0;
    //! The button that the back key presses; none: the user has to touch one. FullScreen: always
    //! cancelled.
    std::optional<int> backButton {};
    Style style = Style::Dialog;

    //! One that is answered by the one button, or by the other and the back key.
    static Alert question(const QString &title, const QString &message)
    {
        return {.title = title,
            .message = message,
            .buttons = cancelOrConfirm(),
            .backButton = cancelButton};
    }
};
