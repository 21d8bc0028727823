import QtQuick
import Vant.Ui

//! Every control once, as a sign-in form would use them.
ScreenFrame {
    id: screen

    property string lastAction
    property bool agreed: false
    property bool refuses: false
    property alias form: form
    property alias linkedText: agreement

    topInset: 24
    bottomInset: 16

    background: Image {
        anchors.fill: parent
        source: "qrc:/assets/icon_bg.png"
        fillMode: Image.PreserveAspectCrop
    }

    NavigationBar {
        id: bar
        width: parent.width
        title: "选择学校"
        onBack: screen.lastAction = "返回"
    }

    SectionIndexBar {
        id: index
        anchors { top: bar.bottom; bottom: parent.bottom; right: parent.right }
        z: 1
        titles: "#ABCDEFGHIJKLMNOPQRSTUVWXYZ".split("")
        currentIndex: 3
        onSectionSelected: section => screen.lastAction = titles[section]
    }

    FormView {
        id: form
        anchors { top: bar.bottom; bottom: parent.bottom; left: parent.left; right: index.left }
        spacing: 12

        Item { width: 1; height: 12 }
        Image { anchors.horizontalCenter: parent.horizontalCenter; source: "qrc:/assets/logo.png" }
        SearchField {
            width: parent.width
            placeholderText: "请输入学校首字母或名称"
        }
        IconTextField {
            width: parent.width
            iconSource: "qrc:/assets/icon_account.png"
            placeholderText: "请输入账号/工号/学号"
        }
        IconTextField {
            width: parent.width
            iconSource: "qrc:/assets/icon_passWord.png"
            placeholderText: "请输入密码"
            password: true
        }
        Row {
            width: parent.width

            ImageCheckBox {
                id: box
                text: "已阅读同意"
                selected: screen.agreed
                onClicked: {
                    screen.lastAction = "selected"
                    if (!screen.refuses)
                        screen.agreed = !screen.agreed
                }
            }
            LinkedText {
                id: agreement
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - box.width
                text: "登录即代表您已阅读同意《用户协议》和《隐私政策》"
                links: [
                    { name: "protocol", title: "《用户协议》" },
                    { name: "privacy", title: "《隐私政策》" }
                ]
                onLinkActivated: name => screen.lastAction = name
            }
        }
        PrimaryButton {
            width: parent.width
            text: "登录"
            onClicked: screen.lastAction = text
        }
        TextLink {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "忘记密码"
            color: Theme.secondaryText
            onClicked: screen.lastAction = text
        }
        LoadingSpinner { anchors.horizontalCenter: parent.horizontalCenter }
        ErrorView {
            width: parent.width
            height: 360
            onRetry: screen.lastAction = buttonText
        }
    }
}
