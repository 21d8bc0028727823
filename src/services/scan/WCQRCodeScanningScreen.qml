import QtQuick
import Vant.Services
import Vant.Ui

//! The view of WCQRCodeScanningVC.
ScreenFrame {
    id: screen

    required property WCQRCodeScanningVC controller

    readonly property color band: "#80000000"
    readonly property color corner: Theme.primary

    statusBarColor: "transparent"
    color: "#000000"

    background: MovingPicture {
        anchors.fill: parent
        cropped: true
        onLoaded: screen.controller.preview = item.videoSink
    }

    Item {
        id: scanningView

        readonly property real side: Math.round(Math.min(0.7 * screen.width, 0.5 * screen.height))

        // The whole view, under the status bar too.
        x: -screen.leftInset
        y: -screen.topInset
        width: screen.width
        height: screen.height

        Rectangle { width: parent.width; height: scanFrame.y; color: screen.band }
        Rectangle {
            y: scanFrame.y
            width: scanFrame.x
            height: scanFrame.height
            color: screen.band
        }
        Rectangle {
            x: scanFrame.x + scanFrame.width
            y: scanFrame.y
            width: parent.width - x
            height: scanFrame.height
            color: screen.band
        }

        Item {
            id: scanFrame
            // Whole pixels: the bands around it must not overlap.
            x: Math.round((parent.width - width) / 2)
            y: Math.round(0.46 * parent.height - height / 2)
            width: scanningView.side
            height: scanningView.side
            clip: true

            Rectangle {
                anchors.fill: parent
                color: "transparent"
                border { width: 1; color: "#66ffffff" }
            }

            Repeater {
                model: 4

                Item {
                    id: mark
                    required property int index
                    x: index % 2 ? parent.width - width : 0
                    y: index > 1 ? parent.height - height : 0
                    width: 22
                    height: 22

                    Rectangle {
                        y: mark.index > 1 ? 19 : 0
                        width: 22
                        height: 3
                        color: screen.corner
                    }
                    Rectangle {
                        x: mark.index % 2 ? 19 : 0
                        width: 3
                        height: 22
                        color: screen.corner
                    }
                }
            }

            Image {
                id: line
                width: parent.width
                height: 12
                visible: screen.controller.scanning
                source: "qrc:/assets/QRCodeScanningLine.png"
                fillMode: Image.Stretch

                NumberAnimation on y {
                    running: line.visible && screen.visible
                    from: 0
                    to: scanFrame.height - line.height
                    duration: 2000
                    loops: Animation.Infinite
                }
            }

            IconButton {
                id: flashlightBtn
                anchors {
                    horizontalCenter: parent.horizontalCenter
                    bottom: parent.bottom
                    bottomMargin: 12
                }
                width: 56
                height: 56
                visible: screen.controller.flashlightBtnVisible
                text: screen.controller.isSelectedFlashlightBtn ? qsTr("关闭手电筒") : qsTr("打开手电筒")
                source: screen.controller.isSelectedFlashlightBtn
                    ? "qrc:/assets/SGQRCodeFlashlightCloseImage.png"
                    : "qrc:/assets/SGQRCodeFlashlightOpenImage.png"
                sourceSize: Qt.size(40, 40)
                onClicked: screen.controller.flashlightPressed()
            }
        }

        Rectangle {
            id: bottomView
            y: scanFrame.y + scanFrame.height
            width: parent.width
            height: parent.height - y
            color: screen.band
        }

        Text {
            id: promptLabel
            anchors {
                top: bottomView.top
                topMargin: 20
                horizontalCenter: parent.horizontalCenter
            }
            width: parent.width - 2 * Theme.margin
            text: qsTr("将二维码/条码放入框内, 即可自动扫描")
            textFormat: Text.PlainText
            font.pixelSize: Theme.captionText
            color: "#ffffff"
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    IconButton {
        anchors { left: parent.left; top: parent.top }
        width: 48
        height: Theme.navigationBarHeight
        text: qsTr("返回")
        source: "qrc:/assets/icon_back_btn_normal.png"
        onClicked: screen.controller.backPressed()
    }

    TextLink {
        anchors { right: parent.right; top: parent.top }
        height: Theme.navigationBarHeight
        rightPadding: Theme.margin
        text: qsTr("相册")
        color: "#ffffff"
        focus: true
        onClicked: screen.controller.albumPressed()
    }
}
