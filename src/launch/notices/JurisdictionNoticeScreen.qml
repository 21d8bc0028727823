import QtQuick
import Vant.Launch
import Vant.Ui

//! The view of JurisdictionNoticeView.
FocusScope {
    id: screen

    required property JurisdictionNoticeView controller

    focus: true

    NoticeBox {
        anchors.fill: parent
        focus: true
        title: screen.controller.title
        refuseText: screen.controller.refuseText
        agreeText: screen.controller.agreeText
        onRefused: screen.controller.refuse()
        onAgreed: screen.controller.agree()

        SensitiveInformationText {
            width: parent.width
            information: screen.controller.information
        }
        NoticeText {
            width: parent.width
            text: screen.controller.prompt
            color: Theme.text
            font.weight: Font.Medium
        }
    }
}
