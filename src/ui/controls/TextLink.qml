import QtQuick

//! A line of text that acts when touched.
Tappable {
    id: control

    property color color: Theme.link

    leftPadding: 8
    rightPadding: 8

    contentItem: Text {
        text: control.text
        textFormat: Text.PlainText
        font: control.font
        color: control.color
        opacity: control.down ? 0.5 : 1
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
