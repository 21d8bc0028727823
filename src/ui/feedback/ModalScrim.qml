import QtQuick

//! Darkens what lies beneath and keeps all input from it.
Rectangle {
    signal tapped

    color: Theme.scrim

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onClicked: parent.tapped()
        onWheel: wheel => wheel.accepted = true
    }
}
