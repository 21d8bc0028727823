import QtQuick
import Vant.Login
import Vant.Ui

//! The view of AuthLoginViewController.
ScreenFrame {
    id: screen

    required property AuthLoginViewController controller

    color: Theme.surface

    Connections {
        target: screen.controller
        function onEndEditing() { screen.forceActiveFocus() }
    }

    FormView {
        id: form
        anchors.fill: parent

        Item { width: 1; height: Math.max(24, form.height * 0.06) }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 24

            Image {
                anchors.verticalCenter: parent.verticalCenter
                width: 72
                height: 72
                source: "qrc:/assets/auth_login_logo.png"
                Accessible.role: Accessible.Graphic
                Accessible.name: qsTr("成长平台")
            }
            Image {
                anchors.verticalCenter: parent.verticalCenter
                source: "qrc:/assets/auth_login_arrow.png"
            }
            Image {
                anchors.verticalCenter: parent.verticalCenter
                width: 72
                height: 72
                source: "qrc:/assets/login_wechat_icon.png"
                sourceSize: Qt.size(216, 216)
                Accessible.role: Accessible.Graphic
                Accessible.name: qsTr("微信")
            }
        }

        Item { width: 1; height: 20 }

        Text {
            width: parent.width
            text: qsTr("登录成长平台并与微信绑定")
            textFormat: Text.PlainText
            font.pixelSize: Theme.bodyText
            color: "#333333"
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Item { width: 1; height: Math.max(20, form.height * 0.04) }

        AccountForm {
            width: parent.width
            controller: screen.controller
        }

        Item { width: 1; height: 24 }
    }
}
