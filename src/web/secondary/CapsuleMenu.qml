import QtQuick
import Vant.Ui

//! A small menu that hangs below a point; a touch anywhere else dismisses it.
FocusScope {
    id: menu

    property var items: []
    property real anchorX: 0
    property real anchorY: 0

    signal chosen(int index)
    signal dismissed

    readonly property real rowHeight: 44
    readonly property int mostRows: 5
    readonly property real offset: 10

    onVisibleChanged: if (visible) list.forceActiveFocus(Qt.PopupFocusReason)

    MouseArea { anchors.fill: parent; onPressed: menu.dismissed() }

    Rectangle {
        id: box
        x: Math.min(menu.width - width - 8, menu.anchorX - width / 2)
        y: menu.anchorY + menu.offset
        width: 80
        height: menu.rowHeight * Math.min(menu.mostRows, menu.items.length)
        radius: 6
        color: "white"
        border { width: 1; color: Theme.line }
        Accessible.role: Accessible.PopupMenu
        Accessible.name: qsTr("菜单")

        Rectangle {
            anchors { horizontalCenter: parent.left; verticalCenter: parent.top }
            anchors.horizontalCenterOffset: menu.anchorX - box.x
            width: 10
            height: 10
            rotation: 45
            color: "white"
        }

        ListView {
            id: list
            anchors.fill: parent
            focus: true
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: menu.items

            delegate: Tappable {
                id: row
                required property string modelData
                required property int index

                width: ListView.view.width
                implicitHeight: menu.rowHeight
                focus: index === 0
                text: modelData
                Accessible.role: Accessible.MenuItem
                onClicked: menu.chosen(index)

                background: Rectangle {
                    radius: box.radius
                    color: row.down ? Theme.pressed : "transparent"
                }
                contentItem: Text {
                    text: row.text
                    textFormat: Text.PlainText
                    font { pixelSize: Math.round(14 * Theme.fontScale); bold: true }
                    color: "gray"
                    verticalAlignment: Text.AlignVCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 10
                    Accessible.ignored: true
                }
            }
        }
    }
}
