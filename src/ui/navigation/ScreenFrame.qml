import QtQuick

//! The frame of a screen: the strip behind the system's status bar, and the content inside the safe
//! area and above the on-screen keyboard. ScreenView sets the four insets of any root that has them.
FocusScope {
    id: frame

    property real topInset: 0
    property real bottomInset: 0
    property real leftInset: 0
    property real rightInset: 0
    property color statusBarColor: Theme.primary
    //! Fills the screen behind the content, edges included.
    property alias background: behind.data
    property alias color: behind.color
    default property alias content: inside.data

    readonly property real keyboardHeight: Qt.inputMethod.visible
        ? Qt.inputMethod.keyboardRectangle.height : 0

    Rectangle {
        id: behind
        anchors.fill: parent
        color: Theme.background
    }

    Rectangle {
        width: parent.width
        height: frame.topInset
        color: frame.statusBarColor
    }

    Item {
        id: inside
        anchors {
            fill: parent
            topMargin: frame.topInset
            leftMargin: frame.leftInset
            rightMargin: frame.rightInset
            bottomMargin: Math.max(frame.bottomInset, frame.keyboardHeight)
        }
    }
}
