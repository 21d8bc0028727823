#pragma once

#include "ui/navigation/ViewController.h"

//! Shows the code that was read from a picture of the album. On the scanner's navigation
//! controller, and gone when popped.
class ScanSuccessJumpVC : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QString jump_URL MEMBER jump_URL CONSTANT)
    Q_PROPERTY(QString jump_bar_code MEMBER jump_bar_code CONSTANT)

public:
    static constexpr auto screenName = "ScanSuccessJumpScreen";
    static constexpr auto screenSource = "qrc:/qt/qml/Vant/Services/ScanSuccessJumpScreen.qml";

    //! One of the two is set before the screen is pushed.
    QString jump_URL;
    QString jump_bar_code;

    bool prefersNavigationBarHidden() const override { return true; }

    Q_INVOKABLE void backPressed();
    //! Pops down to the scanner, the lowest screen.
    Q_INVOKABLE void refreshPressed();
};
