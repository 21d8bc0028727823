import QtQuick
import Vant.Ui

//! Shows the progress indicator in the middle and keeps input from everything beneath.
FocusScope {
    id: view

    required property ProgressHUD progressHUD

    visible: progressHUD.visible

    ModalScrim { anchors.fill: parent; color: "transparent" }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(view.width - 48, Math.max(112, content.implicitWidth + 48))
        height: content.implicitHeight + 40
        radius: Theme.radius
        color: Theme.hudBackground

        Column {
            id: content
            anchors.centerIn: parent
            spacing: 14

            LoadingSpinner {
                anchors.horizontalCenter: parent.horizontalCenter
                visible: view.visible
                color: "white"
            }

            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, view.width - 96)
                visible: text !== ""
                text: view.progressHUD.text
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodyText
                color: "white"
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
