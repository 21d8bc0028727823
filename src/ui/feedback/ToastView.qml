import QtQuick
import Vant.Ui

//! Shows the toast in the middle; touches pass through it.
Item {
    id: view

    required property Toast toast

    readonly property real maximumWidth: Math.min(width - 48, Theme.maximumFormWidth)

    // The first one fades in, too.
    property bool isMade: false

    opacity: isMade && toast.visible ? 1 : 0
    visible: opacity > 0
    Component.onCompleted: isMade = true

    Behavior on opacity { NumberAnimation { duration: Theme.fadeDuration } }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(view.maximumWidth, content.implicitWidth + 40)
        height: content.implicitHeight + 28
        radius: Theme.radius
        color: Theme.hudBackground
        Accessible.role: Accessible.AlertMessage
        Accessible.name: view.toast.text

        Rectangle {
            id: track
            visible: view.toast.kind === Toast.Loading && view.toast.progress >= 0
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 8 }
            height: 3
            radius: 1.5
            color: "#40ffffff"
            Accessible.role: Accessible.ProgressBar
            Accessible.name: view.toast.text

            Rectangle {
                width: parent.width * Math.min(1, view.toast.progress)
                height: parent.height
                radius: parent.radius
                color: Theme.primary
            }
        }

        Row {
            id: content
            anchors.centerIn: parent
            spacing: 10

            Image {
                id: icon
                visible: view.toast.kind === Toast.Success || view.toast.kind === Toast.Error
                anchors.verticalCenter: parent.verticalCenter
                width: visible ? 24 : 0
                height: 24
                source: view.toast.kind === Toast.Success ? "qrc:/assets/toast_success.png"
                                                          : "qrc:/assets/toast_error.png"
            }

            LoadingSpinner {
                id: spinner
                visible: view.toast.kind === Toast.Loading
                anchors.verticalCenter: parent.verticalCenter
                width: 24
                height: 24
                color: "white"
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, view.maximumWidth - 40
                                - (view.toast.kind !== Toast.Plain ? spinner.width + content.spacing : 0))
                text: view.toast.text
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodyText
                color: "white"
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
