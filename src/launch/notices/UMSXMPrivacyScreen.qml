import QtQuick
import Vant.Launch
import Vant.Ui

//! The view of UMSXMPrivacyView.
FocusScope {
    id: screen

    required property UMSXMPrivacyView controller

    focus: true

    Accessible.role: Accessible.Dialog
    Accessible.name: controller.title

    ModalScrim { anchors.fill: parent }

    Rectangle {
        id: card

        anchors { centerIn: parent; verticalCenterOffset: -24 }
        width: Math.min(parent.width - 40, 360 * Math.max(1, Theme.fontScale))
        height: Math.min(parent.height - 140, top.height + lines.height)
        radius: Theme.radius
        color: Theme.surface

        MouseArea { anchors.fill: parent }

        Image {
            id: top
            width: parent.width
            height: width * 0.36
            source: "qrc:/assets/user_topview.png"
            fillMode: Image.PreserveAspectCrop
            Accessible.ignored: true
        }

        Flickable {
            anchors { top: top.bottom; bottom: parent.bottom }
            width: parent.width
            contentHeight: lines.height
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            Column {
                id: lines
                x: 20
                width: parent.width - 40
                topPadding: 12
                bottomPadding: 18
                spacing: 12

                Text {
                    width: parent.width
                    text: screen.controller.title
                    textFormat: Text.PlainText
                    font { pixelSize: Theme.bodyText; weight: Font.DemiBold }
                    color: Theme.text
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                SensitiveInformationText {
                    width: parent.width
                    information: screen.controller.information
                }
            }
        }
    }

    IconButton {
        anchors { top: card.bottom; topMargin: 10; horizontalCenter: parent.horizontalCenter }
        focus: true
        text: qsTr("关闭")
        source: "qrc:/assets/user_close.png"
        sourceSize: Qt.size(32, 32)
        focusRadius: height / 2
        onClicked: screen.controller.onHide()
    }
}
