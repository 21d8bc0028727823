import QtQuick
import Vant.Ui

//! Colours to choose one from, each a text such as "#3dd187". As many in a row as fit.
Grid {
    id: grid

    property var colours: []
    //! The text of the one that is marked, where it is among them.
    property string chosen

    signal chose(string colour)

    columns: Math.max(1, Math.floor(width / Theme.touchSize))

    Repeater {
        model: grid.colours

        Tappable {
            id: swatch
            required property string modelData
            readonly property bool isChosen: modelData === grid.chosen

            width: grid.width / grid.columns
            implicitHeight: Theme.touchSize
            text: modelData
            Accessible.role: Accessible.RadioButton
            Accessible.checkable: true
            Accessible.checked: isChosen
            onClicked: grid.chose(modelData)

            background: Item { }
            contentItem: Item {
                Rectangle {
                    anchors.centerIn: parent
                    width: 34
                    height: 34
                    radius: 17
                    color: swatch.down ? Theme.pressed : "transparent"
                    border { width: swatch.isChosen ? 2 : 0; color: Theme.text }
                }
                Rectangle {
                    anchors.centerIn: parent
                    width: 26
                    height: 26
                    radius: 13
                    color: swatch.modelData
                    border { width: 1; color: Theme.line }
                }
            }
        }
    }
}
