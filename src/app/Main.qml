import QtQuick
import QtQuick.Window
import Vant.Ui

Window {
    id: window

    required property Shell shell

    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 480
    color: "white"

    RootView {
        anchors.fill: parent
        shell: window.shell
    }
}
