import QtQuick

//! The letters at the side of a long list: touch one, or drag along them, to jump. Stands at the
//! list's right edge.
Item {
    id: control

    property var titles: []
    //! The section the list stands at, marked in colour; -1 for none.
    property int currentIndex: -1

    signal sectionSelected(int index)

    readonly property real cellHeight: titles.length > 0
        ? Math.min(height / titles.length, 20 * Theme.fontScale) : 0
    readonly property int touchedIndex: touch.pressed ? indexAt(touch.mouseY) : -1
    readonly property int markedIndex: touchedIndex >= 0 ? touchedIndex : currentIndex

    implicitWidth: Theme.touchSize
    visible: titles.length > 0

    function indexAt(y) {
        return Math.max(0, Math.min(titles.length - 1, Math.floor((y - letters.y) / cellHeight)))
    }

    onTouchedIndexChanged: if (touchedIndex >= 0) sectionSelected(touchedIndex)

    Column {
        id: letters
        anchors { verticalCenter: parent.verticalCenter; right: parent.right }

        Repeater {
            model: control.titles

            Item {
                id: cell
                required property string modelData
                required property int index
                readonly property bool marked: index === control.markedIndex

                width: 24
                height: control.cellHeight
                activeFocusOnTab: index === 0
                Accessible.role: Accessible.Button
                Accessible.name: modelData
                Accessible.onPressAction: control.sectionSelected(index)
                Keys.onReturnPressed: control.sectionSelected(index)
                Keys.onSpacePressed: control.sectionSelected(index)
                Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

                Rectangle {
                    anchors.centerIn: parent
                    width: Math.min(parent.width, parent.height)
                    height: width
                    radius: width / 2
                    color: cell.marked ? Theme.primary : "transparent"
                }

                Text {
                    anchors.centerIn: parent
                    text: cell.modelData
                    textFormat: Text.PlainText
                    font.pixelSize: Math.max(8, Math.min(12 * Theme.fontScale, cell.height * 0.75))
                    color: cell.marked ? Theme.textOnPrimary : Theme.secondaryText
                    Accessible.ignored: true
                }

                FocusRing { shown: cell.activeFocus; radius: 4 }
            }
        }
    }

    MouseArea {
        id: touch
        anchors.fill: parent
        preventStealing: true
    }

    Rectangle {
        visible: control.touchedIndex >= 0
        anchors.right: letters.left
        anchors.rightMargin: 24
        y: Math.max(0, Math.min(control.height - height, touch.mouseY - height / 2))
        width: 56
        height: 56
        radius: 28
        color: Theme.hudBackground

        Text {
            anchors.centerIn: parent
            text: control.touchedIndex >= 0 ? control.titles[control.touchedIndex] : ""
            textFormat: Text.PlainText
            font.pixelSize: 28
            color: "white"
            Accessible.ignored: true
        }
    }
}
