import QtQuick
import Vant.Services
import Vant.Ui

//! The view of LinkCodeController: a card with the code over what is shown.
FocusScope {
    id: screen

    required property LinkCodeController controller

    Accessible.role: Accessible.Dialog
    Accessible.name: controller.hint

    component Line: Text {
        x: 20
        width: parent.width - 40
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    NumberAnimation on opacity { from: 0; to: 1; duration: Theme.fadeDuration }

    ModalScrim {
        anchors.fill: parent
        onTapped: screen.controller.dismiss()
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(parent.width - 48, 342)
        height: Math.min(parent.height - 48, content.implicitHeight)
        radius: Theme.radius
        color: Theme.surface
        clip: true

        MouseArea { anchors.fill: parent }

        Flickable {
            anchors.fill: parent
            contentHeight: content.implicitHeight
            boundsBehavior: Flickable.StopAtBounds

            Column {
                id: content
                width: parent.width
                topPadding: 22
                bottomPadding: 12
                spacing: 10

                Line {
                    visible: text !== ""
                    text: screen.controller.title
                    font { pixelSize: Theme.titleText; weight: Font.Medium }
                    color: Theme.text
                    maximumLineCount: 2
                    Accessible.role: Accessible.Heading
                }
                Line {
                    text: screen.controller.hint
                    font.pixelSize: Theme.bodyText
                    color: Qt.rgba(0.2, 0.2, 0.2, 1)
                }
                Image {
                    // Whole pixels a module: anything else blurs the edges.
                    readonly property int scaling: Math.max(1, Math.floor(260 / implicitWidth))

                    x: (parent.width - width) / 2
                    width: implicitWidth * scaling
                    height: width
                    source: screen.controller.code
                    smooth: false
                    Accessible.role: Accessible.Graphic
                    Accessible.name: qsTr("链接的二维码")
                }
                Line {
                    text: screen.controller.link
                    font.pixelSize: Theme.captionText
                    color: Theme.secondaryText
                    wrapMode: Text.WrapAnywhere
                    maximumLineCount: 2
                }
                PrimaryButton {
                    x: 20
                    width: parent.width - 40
                    text: qsTr("复制链接")
                    focus: true
                    onClicked: screen.controller.copyLink()
                }
                TextLink {
                    x: 20
                    width: parent.width - 40
                    text: qsTr("关闭")
                    color: Theme.text
                    onClicked: screen.controller.dismiss()
                }
            }
        }
    }
}
