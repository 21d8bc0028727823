import QtQuick
import Vant.Ui

//! The agreements: a box to check, and the text with its two links. The box's state is the controller's.
Item {
    id: row

    property bool selected: false

    signal toggled
    signal linkActivated(string name)

    //! What the box has around its picture, so that it can be touched.
    readonly property real boxMargin: (box.width - 20 * Theme.fontScale) / 2

    implicitHeight: Math.max(box.height, label.height)

    ImageCheckBox {
        id: box
        x: -row.boxMargin
        anchors.verticalCenter: parent.verticalCenter
        text: label.text
        selected: row.selected
        onClicked: row.toggled()
    }

    LinkedText {
        id: label
        anchors { left: box.right; leftMargin: 6 - row.boxMargin; right: parent.right; verticalCenter: parent.verticalCenter }
        height: implicitHeight
        text: qsTr("登录即代表您已阅读同意《用户协议》和《隐私政策》")
        links: [
            { title: "《用户协议》", name: "protocol" },
            { title: "《隐私政策》", name: "privacy" }
        ]
        color: "#000000"
        linkColor: "#278bea"
        onLinkActivated: name => row.linkActivated(name)
    }
}
