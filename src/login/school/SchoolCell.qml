import QtQuick
import QtQuick.Templates as T
import Vant.Ui

//! One school of the chooser's list.
T.ItemDelegate {
    id: cell

    required property int index
    required property string aName

    text: aName
    leftPadding: Theme.margin
    rightPadding: 40
    topPadding: 13
    bottomPadding: 13
    implicitHeight: Math.max(52, implicitContentHeight + topPadding + bottomPadding)
    font { family: Qt.application.font.family; pixelSize: Theme.bodyText }
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.onPressAction: cell.clicked()
    Keys.onReturnPressed: cell.clicked()
    Keys.onEnterPressed: cell.clicked()

    contentItem: Text {
        text: cell.text
        font: cell.font
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    background: Rectangle {
        color: cell.down ? Theme.pressed : Theme.surface

        Rectangle {
            anchors { left: parent.left; leftMargin: Theme.margin; right: parent.right; bottom: parent.bottom }
            height: 1
            color: Theme.line
        }
    }

    FocusRing { shown: cell.visualFocus; radius: 0; z: 1 }
}
