import QtQuick

//! The one main action of a screen.
Tappable {
    id: control

    focusRadius: height / 2
    leftPadding: 24
    rightPadding: 24
    topPadding: 10
    bottomPadding: 10
    implicitHeight: Math.max(48, implicitContentHeight + topPadding + bottomPadding)
    font { pixelSize: Theme.titleText; weight: Font.Medium }
    opacity: enabled ? 1 : 0.5

    background: Rectangle {
        radius: height / 2
        color: control.down ? Theme.primaryPressed : Theme.primary
    }
    contentItem: Text {
        text: control.text
        textFormat: Text.PlainText
        font: control.font
        color: Theme.textOnPrimary
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
