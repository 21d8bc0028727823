import QtQuick
import Vant.Ui

//! One answer to a notice.
Tappable {
    id: button

    property color color
    property color textColor

    implicitHeight: Math.max(Theme.touchSize, implicitContentHeight + 16)
    focusRadius: height / 2
    font { pixelSize: Theme.bodyText; weight: Font.Medium }

    background: Rectangle {
        radius: height / 2
        color: button.down ? Qt.darker(button.color, 1.12) : button.color
    }
    contentItem: Text {
        text: button.text
        textFormat: Text.PlainText
        font: button.font
        color: button.textColor
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
