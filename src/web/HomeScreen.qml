import QtQuick
import Vant.Ui
import Vant.Web

// The portal under a strip in the colour that the page chose.
Rectangle {
    id: root

    required property STHomeViewController controller

    color: "#f7f7f7"

    Rectangle {
        id: statusBar
        anchors { top: parent.top; left: parent.left; right: parent.right }
        height: root.controller.safeArea.top
        color: root.controller.statusBarColor
    }

    WebPage {
        id: page
        anchors {
            top: statusBar.bottom
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            leftMargin: root.controller.safeArea.left
            rightMargin: root.controller.safeArea.right
            bottomMargin: root.controller.safeArea.bottom
        }
        webView: root.controller.webView
        onLongPressed: position => root.controller.longPressed(position)
    }

    ErrorView {
        anchors.fill: page
        visible: root.controller.errorViewVisible
        onRetry: root.controller.errorViewButtonDidPress()
    }
}
