import QtQuick
import Vant.Services
import Vant.Ui

//! The view of ScanSuccessJumpVC.
ScreenFrame {
    id: screen

    required property ScanSuccessJumpVC controller

    color: Theme.surface
    statusBarColor: Theme.surface

    TextLink {
        id: back
        anchors { left: parent.left; top: parent.top }
        height: Theme.navigationBarHeight
        leftPadding: Theme.margin
        text: qsTr("back")
        color: Qt.rgba(0.082, 0.494, 0.984, 1)
        focus: true
        onClicked: screen.controller.backPressed()
    }

    IconButton {
        anchors { right: parent.right; top: parent.top }
        width: 48
        height: Theme.navigationBarHeight
        text: qsTr("刷新")
        source: "qrc:/assets/scan_refresh.png"
        onClicked: screen.controller.refreshPressed()
    }

    Flickable {
        anchors { fill: parent; topMargin: back.height }
        contentHeight: Math.max(height, result.height + 2 * result.y)
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: result
            x: 24
            y: 48
            width: parent.width - 2 * x
            spacing: 16

            Text {
                width: parent.width
                visible: screen.controller.jump_bar_code !== ""
                text: qsTr("您扫描的条形码结果如下： ")
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodyText
                color: Theme.text
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Text {
                readonly property bool isAddress: screen.controller.jump_URL !== ""

                width: parent.width
                text: isAddress ? screen.controller.jump_URL : screen.controller.jump_bar_code
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodyText
                color: isAddress ? Theme.text : "#ff0000"
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WrapAnywhere
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
