import QtQuick
import QtQuick.Templates as T

//! What all buttons have in common: touch size, keyboard use, focus ring, the text as accessible
//! name.
T.AbstractButton {
    id: control

    property real focusRadius: 8

    implicitWidth: Math.max(Theme.touchSize, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Theme.touchSize, implicitContentHeight + topPadding + bottomPadding)
    font { family: Qt.application.font.family; pixelSize: Theme.bodyText }
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    FocusRing { shown: control.visualFocus; radius: control.focusRadius; z: 1 }
}
