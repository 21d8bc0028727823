import Vant.Ui

ScreenFrame {
    id: screen

    required property ViewController controller

    PrimaryButton {
        property int clicks: 0

        anchors.centerIn: parent
        text: "按 " + screen.controller.title
        onClicked: clicks++
    }
}
