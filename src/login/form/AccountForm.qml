import QtQuick
import Vant.Login
import Vant.Ui

//! Account, password, the agreements and the login button, as every login screen has them.
Column {
    id: form

    required property LoginFormViewController controller
    property string accountPlaceholder: qsTr("请输入账号/工号/学号")
    property color placeholderColor: "#cccccc"
    property bool loginEnabled: true
    property real fieldSpacing: 8
    //! Whether account and password may be written in. Where they may not, a touch says so by writingRefused.
    property bool writable: true

    signal writingRefused

    function login() {
        Qt.inputMethod.commit()
        if (button.enabled)
            controller.login()
    }

    component Field: IconTextField {
        width: form.width
        placeholderTextColor: form.placeholderColor
        readOnly: !form.writable
        onPressed: if (readOnly) form.writingRefused()
        onActiveFocusChanged: {
            if (activeFocus && readOnly && focusReason !== Qt.MouseFocusReason)
                form.writingRefused()
        }
    }

    Field {
        iconSource: "qrc:/assets/icon_account.png"
        placeholderText: form.accountPlaceholder
        inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
        text: form.controller.account
        onTextEdited: form.controller.account = text
        onAccepted: password.forceActiveFocus(Qt.TabFocusReason)
    }

    Item { width: 1; height: form.fieldSpacing }

    Field {
        id: password
        iconSource: "qrc:/assets/icon_passWord.png"
        placeholderText: qsTr("请输入密码")
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

    Text {
        width: parent.width
        visible: text !== ""
        bottomPadding: 12
        text: form.controller.connectionWarning
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionText
        color: "#b3261e"
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    PrimaryButton {
        id: button
        width: parent.width
        text: qsTr("登录")
        enabled: form.loginEnabled
        onClicked: form.login()
    }
}
