import QtQuick
import QtQuick.Templates as T

//! A line of input with an icon before it and a rule below it. The placeholder is its accessible
//! name; that the content is hidden, the screen reader learns from the echo mode.
T.TextField {
    id: control

    property url iconSource
    property bool password: false

    implicitWidth: 280
    implicitHeight: Math.max(52, contentHeight + 24)
    leftPadding: iconSource != "" ? 40 : 4
    rightPadding: 4
    // A text control has a font of its own otherwise.
    font.family: Qt.application.font.family
    font.pixelSize: Theme.bodyText
    color: Theme.text
    placeholderTextColor: Theme.placeholder
    selectionColor: Theme.primary
    selectedTextColor: Theme.textOnPrimary
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    echoMode: password ? TextInput.Password : TextInput.Normal
    inputMethodHints: password
        ? Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase : Qt.ImhNone
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    Image {
        x: 4
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        source: control.iconSource
        fillMode: Image.PreserveAspectFit
    }

    PlaceholderText { field: control }

    background: Item {
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: control.activeFocus ? 2 : 1
            color: control.activeFocus ? Theme.primary : Theme.line
        }
    }
}
