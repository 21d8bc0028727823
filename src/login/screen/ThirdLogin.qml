import QtQuick
import Vant.Ui

//! The other ways to sign in: a title between two lines, and the WeChat button.
Column {
    id: row

    signal wechatLogin

    topPadding: 16
    spacing: 8

    Item {
        width: row.width
        height: label.height

        Text {
            id: label
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("第三方账号登录")
            textFormat: Text.PlainText
            font.pixelSize: Theme.captionText
            color: "#999999"
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Rectangle {
            anchors { left: parent.left; right: label.left; rightMargin: 12; verticalCenter: parent.verticalCenter }
            height: 1
            color: "#e4e4e4"
        }
        Rectangle {
            anchors { left: label.right; leftMargin: 12; right: parent.right; verticalCenter: parent.verticalCenter }
            height: 1
            color: "#e4e4e4"
        }
    }

    IconButton {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 56
        height: 56
        text: qsTr("微信登录")
        source: "qrc:/assets/login_wechat_icon.png"
        sourceSize: Qt.size(44, 44)
        onClicked: row.wechatLogin()
    }
}
