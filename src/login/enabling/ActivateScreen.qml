import QtQuick
import Vant.Login
import Vant.Ui

//! The view of ActivateFormViewController.
ScreenFrame {
    id: screen

    required property ActivateFormViewController controller

    color: Theme.surface

    function activate() {
        Qt.inputMethod.commit()
        if (button.enabled)
            controller.activate()
    }

    Connections {
        target: screen.controller
        function onEndEditing() { screen.forceActiveFocus() }
    }

    FormView {
        anchors.fill: parent

        Item { width: 1; height: 24 }

        Text {
            width: parent.width
            text: qsTr("请填写学校登记的信息，验证身份后即可设置账号和密码。")
            textFormat: Text.PlainText
            font.pixelSize: Theme.captionText
            color: "#666666"
            wrapMode: Text.Wrap
            lineHeight: 1.3
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Item { width: 1; height: 12 }

        IconTextField {
            width: parent.width
            iconSource: "qrc:/assets/icon_account.png"
            placeholderText: screen.controller.holderPlaceholder
            inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
            text: screen.controller.holder
            onTextEdited: screen.controller.holder = text
            onAccepted: cartNo.forceActiveFocus(Qt.TabFocusReason)
        }

        Item { width: 1; height: 8 }

        IconTextField {
            id: cartNo
            width: parent.width
            iconSource: "qrc:/assets/icon_cartNo.png"
            placeholderText: qsTr("证件号码")
            inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
            text: screen.controller.cartNo
            onTextEdited: screen.controller.cartNo = text
            onAccepted: screen.activate()
        }

        Item { width: 1; height: 32 }

        PrimaryButton {
            id: button
            width: parent.width
            text: qsTr("激活")
            enabled: screen.controller.activateEnabled
            onClicked: screen.activate()
        }

        Item { width: 1; height: 24 }
    }
}
