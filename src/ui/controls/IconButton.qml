import QtQuick

//! A picture that acts when touched. `text` is read out, not drawn.
Tappable {
    id: control

    property url source
    property size sourceSize: Qt.size(24, 24)

    contentItem: Item {
        implicitWidth: control.sourceSize.width
        implicitHeight: control.sourceSize.height

        Image {
            anchors.centerIn: parent
            width: control.sourceSize.width
            height: control.sourceSize.height
            source: control.source
            fillMode: Image.PreserveAspectFit
            opacity: control.down ? 0.5 : 1
            Accessible.ignored: true
        }
    }
}
