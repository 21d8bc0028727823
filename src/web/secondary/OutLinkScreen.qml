import QtQuick
import Vant.Ui
import Vant.Web

// A page under a bar in the colour that its opener chose.
ScreenFrame {
    id: root

    required property OMOutLinkViewController controller

    statusBarColor: controller.barColor

    NavigationBar {
        id: bar
        width: parent.width
        color: root.controller.barColor
        title: root.controller.title
        onBack: root.controller.close()
    }

    WebPage {
        id: page
        anchors { top: bar.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        webView: root.controller.webView
        accent: root.controller.barColor
    }

    // Watches alone: the page keeps every touch.
    Item {
        anchors.fill: page

        PointHandler {
            property point first
            property point last
            acceptedDevices: PointerDevice.TouchScreen
            onActiveChanged: {
                if (active)
                    first = last = point.position
                else
                    root.controller.swiped(first, last, page.width)
            }
            onPointChanged: if (active) last = point.position
        }
    }

    ErrorView {
        anchors.fill: page
        visible: root.controller.errorView.visible
        reason: root.controller.errorView.reason
        onRetry: root.controller.errorView.retry()
    }
}
