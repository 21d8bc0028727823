import QtQuick
import QtQuick.Controls.Basic

Window {
    width: 390
    height: 844
    visible: true

    TextField {
        anchors.centerIn: parent
    }
}
