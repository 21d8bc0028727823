pragma Singleton
import QtQuick

//! Every colour, size and duration that more than one view uses.
QtObject {
    //! How much larger than usual the user wants text; FontChooser puts it into the application font.
    readonly property real fontScale: Qt.application.font.pixelSize > 0
        ? Qt.application.font.pixelSize / 16 : 1

    readonly property color primary: "#3dd187"
    readonly property color primaryPressed: "#2fb974"
    readonly property color link: "#278bea"
    readonly property color text: "#1f2329"
    readonly property color secondaryText: "#999999"
    readonly property color placeholder: "#cccccc"
    readonly property color line: "#e4e4e4"
    readonly property color background: "#f7f7f7"
    readonly property color surface: "#ffffff"
    readonly property color pressed: "#ebebeb"
    readonly property color error: "#e5484d"
    readonly property color textOnPrimary: "#ffffff"
    readonly property color focus: "#1668dc"
    readonly property color scrim: "#73000000"
    readonly property color hudBackground: "#eb262b30"

    readonly property int captionText: Math.round(13 * fontScale)
    readonly property int bodyText: Math.round(16 * fontScale)
    readonly property int titleText: Math.round(18 * fontScale)

    readonly property int touchSize: 44
    readonly property int navigationBarHeight: 48
    readonly property int maximumFormWidth: 480
    readonly property int margin: 16
    readonly property int radius: 12

    readonly property int transitionDuration: 250
    readonly property int fadeDuration: 150
}
