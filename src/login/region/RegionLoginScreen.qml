import QtQuick
import Vant.Login
import Vant.Ui

//! The view of LoginViewController.
ScreenFrame {
    id: screen

    required property LoginViewController controller

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

        Item { width: 1; height: Math.max(20, form.height * 0.05) }

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 72
            height: 72
            source: "qrc:/assets/logo.png"
            sourceSize: Qt.size(216, 216)
            fillMode: Image.PreserveAspectFit
            Accessible.ignored: true
        }

        Item { width: 1; height: 8 }

        Text {
            width: parent.width
            text: screen.controller.title
            textFormat: Text.PlainText
            font { pixelSize: Math.round(22 * Theme.fontScale); weight: Font.DemiBold }
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Item { width: 1; height: Math.max(12, form.height * 0.025) }

        ChoiceRow {
            width: parent.width
            iconSource: "qrc:/assets/icon_provinces.png"
            text: screen.controller.provincesText
            chosen: screen.controller.cityChosen
            onClicked: screen.controller.textFieldShouldBeginEditing(LoginViewController.Provinces)
        }
        ChoiceRow {
            width: parent.width
            iconSource: "qrc:/assets/icon_city.png"
            text: screen.controller.cityText
            chosen: screen.controller.cityChosen
            onClicked: screen.controller.textFieldShouldBeginEditing(LoginViewController.City)
        }
        ChoiceRow {
            width: parent.width
            text: screen.controller.schoolText
            chosen: screen.controller.schoolChosen
            onClicked: screen.controller.textFieldShouldBeginEditing(LoginViewController.School)
        }

        AccountForm {
            width: parent.width
            controller: screen.controller
            accountPlaceholder: qsTr("账号\\手机号码")
            placeholderColor: "#999999"
            fieldSpacing: 0
            loginEnabled: screen.controller.loginEnabled
            writable: screen.controller.schoolChosen
            onWritingRefused: screen.controller.textFieldShouldBeginEditing(LoginViewController.Account)
        }

        Item { width: 1; height: 4 }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter

            Text {
                height: parent.height
                verticalAlignment: Text.AlignVCenter
                text: qsTr("首次使用？")
                textFormat: Text.PlainText
                font.pixelSize: Theme.captionText
                color: "#999999"
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            TextLink {
                leftPadding: 0
                text: qsTr("账号激活")
                font.pixelSize: Theme.captionText
                onClicked: screen.controller.activate()
            }
        }

        ThirdLogin {
            width: parent.width
            topPadding: 4
            visible: !screen.controller.wechatLoginHidden
            onWechatLogin: screen.controller.wechatLogin()
        }

        Item { width: 1; height: 24 }
    }
}
