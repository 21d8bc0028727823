import QtQuick
import Vant.Launch
import Vant.Ui

//! The view of JurisdictionNoticeAlertView.
FocusScope {
    id: screen

    required property JurisdictionNoticeAlertView controller

    focus: true

    NoticeBox {
        anchors.fill: parent
        focus: true
        title: screen.controller.title
        refuseText: screen.controller.refuseText
        agreeText: screen.controller.agreeText
        onRefused: screen.controller.refuse()
        onAgreed: screen.controller.agree()

        LinkedText {
            width: parent.width
            height: implicitHeight
            text: screen.controller.text
            links: [{ title: screen.controller.linkTitle, name: "privacy" }]
            color: "#4a4f57"
            linkColor: "#278bea"
            pixelSize: Theme.bodyText
            onLinkActivated: name => screen.controller.didSelectLink(name)
        }
    }
}
