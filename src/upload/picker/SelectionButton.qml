import QtQuick
import QtQuick.Templates as T
import Vant.Ui
import Vant.Upload

//! Chooses an asset. Shows its number in the order of choosing.
T.CheckBox {
    id: control

    required property int number
    required property string name
    required property ImagePickerController controller

    text: qsTr("选择%1").arg(name)
    implicitWidth: Theme.touchSize
    implicitHeight: Theme.touchSize
    checked: number > 0
    nextCheckState: () => checkState
    Accessible.name: text
    Accessible.description: number > 0 ? qsTr("第%1个").arg(number) : ""
    Accessible.onPressAction: control.clicked()
    Accessible.onToggleAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    Rectangle {
        anchors { top: parent.top; right: parent.right; margins: 5 }
        width: 24
        height: 24
        radius: 12
        color: control.number > 0 ? control.controller.settings.iconThemeColor : "#40000000"
        border { width: control.number > 0 ? 0 : 1.5; color: "#ffffff" }
        opacity: control.down ? 0.5 : 1

        Text {
            anchors { fill: parent; margins: 3 }
            visible: control.number > 0
            text: control.number
            textFormat: Text.PlainText
            font { pixelSize: 14; weight: Font.Medium }
            fontSizeMode: Text.Fit
            minimumPixelSize: 8
            color: control.controller.settings.textColorOn(control.controller.settings.iconThemeColor)
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }

    FocusRing { shown: control.visualFocus }
}
