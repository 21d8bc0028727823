import QtQuick
import Vant.Ui
import Vant.Web

// The portal under a strip in the colour that the page chose.
ScreenFrame {
    id: root

    required property STHomeViewController controller

    color: "#f7f7f7"
    statusBarColor: controller.statusBarColor

    WebPage {
        id: page
        anchors.fill: parent
        webView: root.controller.webView
        accent: root.controller.statusBarColor
        onLongPressed: position => root.controller.longPressed(position)
    }

    ErrorView {
        anchors.fill: page
        visible: root.controller.errorView.visible
        reason: root.controller.errorView.reason
        onRetry: root.controller.errorView.retry()
    }
}
