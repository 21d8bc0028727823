import QtQuick
import Vant.Ui
import Vant.Web

// A page under the navigation bar that its controller's navigation gives it.
Item {
    id: root

    required property OMOutLinkViewController controller

    WebPage {
        anchors.fill: parent
        webView: root.controller.webView
    }

    ErrorView {
        anchors.fill: parent
        visible: root.controller.errorViewVisible
        onRetry: root.controller.errorViewButtonDidPress()
    }
}
