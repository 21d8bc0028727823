import QtQuick
import Vant.Ui

//! Shows an alert of the full-screen style: a page of text with a button that closes it.
FocusScope {
    id: view

    required property AlertView alertView
    required property SafeArea safeArea

    visible: alertView.visible && alertView.fullScreen

    ModalScrim { anchors.fill: parent }

    Rectangle {
        anchors {
            centerIn: parent
            verticalCenterOffset: (view.safeArea.top - view.safeArea.bottom) / 2
        }
        width: Math.min(parent.width - 40, Theme.maximumFormWidth)
        height: Math.min(parent.height - view.safeArea.top - view.safeArea.bottom - 48,
                         Math.max(320, title.height + body.implicitHeight + close.height + 104))
        radius: Theme.radius
        color: Theme.surface

        Text {
            id: title
            anchors {
                top: parent.top
                left: parent.left
                right: parent.right
                margins: 20
                topMargin: 28
            }
            text: view.alertView.title
            textFormat: Text.PlainText
            font { pixelSize: Theme.titleText; weight: Font.Medium }
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Flickable {
            anchors {
                top: title.bottom
                bottom: close.top
                left: parent.left
                right: parent.right
                margins: 20
            }
            contentHeight: body.implicitHeight
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            Text {
                id: body
                width: parent.width
                text: view.alertView.message
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodyText
                color: "#4a4f57"
                wrapMode: Text.Wrap
                lineHeight: 1.4
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        IconButton {
            id: close
            anchors {
                horizontalCenter: parent.horizontalCenter
                bottom: parent.bottom
                bottomMargin: 16
            }
            focus: true
            text: qsTr("关闭")
            source: "qrc:/assets/alert_close.png"
            sourceSize: Qt.size(36, 36)
            onClicked: view.alertView.cancel()
        }
    }
}
