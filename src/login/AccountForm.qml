import QtQuick
import Vant.Login
import Vant.Ui

//! Account, password, the agreements and the login button, as every login screen has them.
Column {
    id: form

    required property LoginFormViewController controller

    function login() {
        Qt.inputMethod.commit()
        controller.login()
    }

    IconTextField {
        width: parent.width
        iconSource: "qrc:/assets/icon_account.png"
        placeholderText: qsTr("请输入账号/工号/学号")
        placeholderTextColor: "#cccccc"
        inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
        text: form.controller.account
        onTextEdited: form.controller.account = text
        onAccepted: password.forceActiveFocus(Qt.TabFocusReason)
    }

    Item { width: 1; height: 8 }

    IconTextField {
        id: password
        width: parent.width
        iconSource: "qrc:/assets/icon_passWord.png"
        placeholderText: qsTr("请输入密码")
        placeholderTextColor: "#cccccc"
        password: true
        text: form.controller.password
        onTextEdited: form.controller.password = text
        onAccepted: form.login()
    }

    Item { width: 1; height: 16 }

    AgreementRow {
        width: parent.width
        selected: form.controller.userInstructionsSelected
        onToggled: form.controller.checkUserInstructions()
        onLinkActivated: name => form.controller.didSelectLink(name)
    }

    Item { width: 1; height: 20 }

    PrimaryButton {
        width: parent.width
        text: qsTr("登录")
        onClicked: form.login()
    }
}
