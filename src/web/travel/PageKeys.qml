import QtQuick
import QtWebEngine
import Vant.Web

// The ways through pages by keys and mouse buttons. The way back is the window's, for all screens.
Item {
    id: root

    required property WebView webView
    required property WebEngineView view
    readonly property bool isOnTop: visible && enabled
    readonly property PageTravel travel: webView.travel
    //! What the page leaves free at its top.
    readonly property real barHeight: bar.height

    Shortcut {
        enabled: root.isOnTop
        sequences: ["F5", "Ctrl+R"]
        onActivated: root.travel.reloadWanted()
    }
    Shortcut {
        enabled: root.isOnTop
        sequences: [StandardKey.Forward]
        onActivated: root.webView.goForward()
    }
    Shortcut {
        enabled: root.isOnTop
        sequences: [StandardKey.Find]
        onActivated: {
            root.travel.finding = true
            if (bar.item)
                bar.item.takeFocus()
        }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.ForwardButton
        onClicked: root.webView.goForward()
    }

    Loader {
        id: bar
        width: parent.width
        height: item ? item.height : 0
        active: root.travel.finding
        sourceComponent: FindBar {
            view: root.view
            onClosed: root.travel.finding = false
        }
        onActiveChanged: if (!active) root.view.forceActiveFocus()
    }
}
