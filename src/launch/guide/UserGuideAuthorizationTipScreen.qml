import QtQuick
import Vant.Launch
import Vant.Ui

//! The view of UserGuideAuthorizationTipView.
FocusScope {
    id: screen

    required property UserGuideAuthorizationTipView controller

    focus: true

    NoticeBox {
        anchors.fill: parent
        focus: true
        title: screen.controller.title
        refuseText: qsTr("不同意")
        agreeText: qsTr("同意")
        onRefused: screen.controller.refuse()
        onAgreed: screen.controller.agree()

        LinkedText {
            width: parent.width
            height: implicitHeight
            text: qsTr("请您在使用前阅读并同意《用户协议》和《隐私政策》，了解我们如何收集、使用和保护您的个人信息。同意后即可开始使用。")
            links: [
                { title: "《用户协议》", name: "protocol" },
                { title: "《隐私政策》", name: "privacy" }
            ]
            color: "#4a4f57"
            linkColor: "#278bea"
            pixelSize: Theme.bodyText
            onLinkActivated: name => screen.controller.didSelectLink(name)
        }
    }
}
