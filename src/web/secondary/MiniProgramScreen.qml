import QtQuick
import Vant.Ui
import Vant.Web

// A page under a title and a capsule; the capsule's menu lies over all of it.
ScreenFrame {
    id: root

    required property OLMiniProgramStyleViewController controller

    color: "#f7f7f7"
    statusBarColor: controller.statusBarColor

    Item {
        id: header
        width: parent.width
        height: Theme.navigationBarHeight

        Text {
            readonly property real side: header.width - capsule.x + 8

            anchors.centerIn: parent
            width: parent.width - 2 * side
            text: root.controller.title
            textFormat: Text.PlainText
            font { pixelSize: Theme.titleText; weight: Font.Medium }
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 14
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Rectangle {
            id: capsule
            anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
            width: buttons.width
            height: 32
            radius: 16
            color: "white"
            border { width: 1; color: Qt.rgba(0, 0, 0, 0.1) }

            Rectangle {
                anchors.centerIn: parent
                width: 1
                height: 18
                color: Qt.rgba(0, 0, 0, 0.1)
            }

            Row {
                id: buttons
                anchors.verticalCenter: parent.verticalCenter

                IconButton {
                    text: qsTr("菜单")
                    source: "qrc:/assets/mini_style_navi_other.png"
                    sourceSize: Qt.size(20, 20)
                    onClicked: root.controller.leftButtonPressed()
                }
                IconButton {
                    text: qsTr("关闭")
                    source: "qrc:/assets/mini_style_navi_close.png"
                    sourceSize: Qt.size(20, 20)
                    onClicked: root.controller.close()
                }
            }
        }
    }

    WebPage {
        id: page
        anchors { top: header.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        webView: root.controller.webView
        accent: root.controller.statusBarColor
    }

    ErrorView {
        anchors.fill: page
        visible: root.controller.errorView.visible
        reason: root.controller.errorView.reason
        onRetry: root.controller.errorView.retry()
    }

    CapsuleMenu {
        anchors.fill: parent
        visible: root.controller.menuVisible
        items: root.controller.menuItems
        // Below the menu button, in the middle of its half of the capsule.
        anchorX: capsule.x + capsule.width / 4
        anchorY: capsule.y + capsule.height
        onChosen: index => root.controller.menuItemChosen(index)
        onDismissed: root.controller.menuDismissed()
    }
}
