import QtQuick
import Vant.Login
import Vant.Ui

//! The view of STSetingAccountViewController.
ScreenFrame {
    id: screen

    required property STSetingAccountViewController controller

    color: Theme.surface

    function seting() {
        Qt.inputMethod.commit()
        if (button.enabled)
            controller.seting()
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
            text: screen.controller.greeting
            textFormat: Text.PlainText
            font { pixelSize: Math.round(22 * Theme.fontScale); weight: Font.DemiBold }
            color: Theme.text
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Item { width: 1; height: 8 }

        Row {
            spacing: 6

            Image {
                anchors.verticalCenter: parent.verticalCenter
                width: 18 * Theme.fontScale
                height: width
                source: "qrc:/assets/btn_login_checked.png"
                Accessible.ignored: true
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("验证成功")
                textFormat: Text.PlainText
                font.pixelSize: Theme.captionText
                color: "#666666"
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        Item { width: 1; height: 16 }

        IconTextField {
            width: parent.width
            iconSource: "qrc:/assets/icon_cartNo.png"
            placeholderText: qsTr("学号/工号")
            readOnly: true
            color: "#666666"
            text: screen.controller.userNo
        }

        Item { width: 1; height: 8 }

        IconTextField {
            width: parent.width
            iconSource: "qrc:/assets/icon_account.png"
            placeholderText: qsTr("请设置登录账号")
            inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
            text: screen.controller.account
            onTextEdited: screen.controller.account = text
            onAccepted: password.forceActiveFocus(Qt.TabFocusReason)
        }

        Item { width: 1; height: 8 }

        IconTextField {
            id: password
            width: parent.width
            iconSource: "qrc:/assets/icon_passWord.png"
            placeholderText: qsTr("请设置密码，不小于6位")
            password: true
            text: screen.controller.password
            onTextEdited: screen.controller.password = text
            onAccepted: confirmPassword.forceActiveFocus(Qt.TabFocusReason)
        }

        Item { width: 1; height: 8 }

        IconTextField {
            id: confirmPassword
            width: parent.width
            iconSource: "qrc:/assets/icon_passWord.png"
            placeholderText: qsTr("请再次输入密码")
            password: true
            text: screen.controller.confirmPassword
            onTextEdited: screen.controller.confirmPassword = text
            onAccepted: screen.seting()
        }

        Item { width: 1; height: 32 }

        PrimaryButton {
            id: button
            width: parent.width
            text: qsTr("确定")
            enabled: screen.controller.setingEnabled
            onClicked: screen.seting()
        }

        Item { width: 1; height: 24 }
    }
}
