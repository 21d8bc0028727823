import QtQuick
import Vant.Ui

ScreenFrame {
    id: screen

    required property ViewController controller
    property int clicks: 0

    objectName: "screen " + controller.title

    PrimaryButton {
        anchors.centerIn: parent
        text: "按 " + screen.controller.title
        onClicked: screen.clicks++
    }
}
