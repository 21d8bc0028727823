import QtQuick
import Vant.Ui

//! A row of a login form that opens a choice, and shows what has been chosen.
Tappable {
    id: row

    property bool chosen: false
    property url iconSource: "qrc:/assets/icon_chooseSchool.png"

    leftPadding: 40
    rightPadding: 28
    topPadding: 12
    bottomPadding: 12
    implicitHeight: Math.max(52, implicitContentHeight + topPadding + bottomPadding)

    contentItem: Text {
        text: row.text
        textFormat: Text.PlainText
        font: row.font
        color: row.chosen ? "#000000" : "#cccccc"
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }

    background: Item {
        Rectangle {
            anchors.fill: parent
            color: Theme.pressed
            visible: row.down
        }
        Image {
            x: 4
            anchors.verticalCenter: parent.verticalCenter
            width: 24
            height: 24
            source: row.iconSource
            fillMode: Image.PreserveAspectFit
        }
        Image {
            anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
            width: 16
            height: 16
            source: "qrc:/assets/icon_more.png"
            fillMode: Image.PreserveAspectFit
        }
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 1
            color: Theme.line
        }
    }
}
