import QtQuick
import Vant.Ui

//! The letter above a section of the chooser's list.
Rectangle {
    id: header

    required property string section

    height: letter.implicitHeight + 12
    color: Theme.background
    z: 2

    Text {
        id: letter
        anchors { left: parent.left; leftMargin: Theme.margin; verticalCenter: parent.verticalCenter }
        text: header.section
        textFormat: Text.PlainText
        font { pixelSize: Theme.captionText; weight: Font.DemiBold }
        color: Theme.secondaryText
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
