import QtQuick
import QtQuick.Templates as T

//! A rounded field to search by, with a button that empties it.
T.TextField {
    id: control

    implicitWidth: 280
    implicitHeight: Math.max(Theme.touchSize, contentHeight + 16)
    leftPadding: 40
    rightPadding: clear.visible ? clear.width : 12
    // A text control has a font of its own otherwise.
    font.family: Qt.application.font.family
    font.pixelSize: Theme.bodyText
    color: Theme.text
    placeholderTextColor: Theme.secondaryText
    selectionColor: Theme.primary
    selectedTextColor: Theme.textOnPrimary
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    inputMethodHints: Qt.ImhNoPredictiveText
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Accessible.searchEdit: true

    Image {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        source: "qrc:/assets/icon_search.png"
    }

    PlaceholderText { field: control }

    IconButton {
        id: clear
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        visible: control.text !== ""
        text: qsTr("清除")
        source: "qrc:/assets/icon_clear.png"
        sourceSize: Qt.size(18, 18)
        onClicked: {
            control.clear()
            control.forceActiveFocus()
        }
    }

    background: Rectangle {
        radius: height / 2
        color: Theme.surface
        border {
            width: control.activeFocus ? 2 : 1
            color: control.activeFocus ? Theme.primary : Theme.line
        }
    }
}
