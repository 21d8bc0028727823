import QtQuick
import Vant.Login
import Vant.Ui

//! The view of LoginViewController2.
ScreenFrame {
    id: screen

    required property LoginViewController2 controller

    color: Theme.surface
    statusBarColor: "transparent"

    Connections {
        target: screen.controller
        function onEndEditing() { screen.forceActiveFocus() }
    }

    background: Image {
        anchors.fill: parent
        source: "qrc:/assets/icon_bg.png"
        asynchronous: true
        fillMode: Image.PreserveAspectCrop
    }

    FormView {
        id: form
        anchors.fill: parent

        Item { width: 1; height: Math.max(24, form.height * 0.08) }

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 96
            height: 96
            source: screen.controller.logo
            sourceSize: Qt.size(288, 288)
            fillMode: Image.PreserveAspectFit
            asynchronous: true
            Accessible.role: Accessible.Graphic
            Accessible.name: qsTr("学校标志")
        }

        Item { width: 1; height: 12 }

        Text {
            width: parent.width
            text: screen.controller.title
            textFormat: Text.PlainText
            font { pixelSize: Math.round(24 * Theme.fontScale); weight: Font.DemiBold }
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Item { width: 1; height: Math.max(20, form.height * 0.04) }

        ChoiceRow {
            width: parent.width
            text: screen.controller.schoolText
            chosen: screen.controller.schoolChosen
            onClicked: screen.controller.chooseSchool()
        }

        Item { width: 1; height: 8 }

        AccountForm {
            width: parent.width
            controller: screen.controller
        }

        Item { width: 1; height: 4 }

        TextLink {
            anchors.right: parent.right
            text: qsTr("忘记密码")
            color: "#999999"
            font.pixelSize: Theme.captionText
            onClicked: screen.controller.forgetPwd()
        }

        ThirdLogin {
            width: parent.width
            visible: !screen.controller.wechatLoginHidden
            onWechatLogin: screen.controller.wechatLogin()
        }

        Item { width: 1; height: 24 }
    }
}
