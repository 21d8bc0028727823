import QtQuick

//! Shows where the keyboard is. Fills the control it stands in.
Rectangle {
    required property bool shown

    anchors.fill: parent
    visible: shown
    color: "transparent"
    radius: 8
    border { width: 2; color: Theme.focus }
}
