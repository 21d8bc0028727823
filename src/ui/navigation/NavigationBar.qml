import QtQuick

//! The bar at the top of a screen: title in the middle, back button at the left, and what is put
//! into it at the right.
Rectangle {
    id: control

    property string title
    property bool backVisible: true
    default property alias actions: right.data

    signal back

    implicitHeight: Theme.navigationBarHeight
    color: Theme.primary

    IconButton {
        id: backButton
        anchors { left: parent.left; verticalCenter: parent.verticalCenter }
        visible: control.backVisible
        width: 48
        height: parent.height
        text: qsTr("返回")
        source: "qrc:/assets/icon_back_btn_normal.png"
        onClicked: control.back()
    }

    Text {
        readonly property real side: Math.max(backButton.visible ? backButton.width : 8, right.width)

        anchors.centerIn: parent
        width: parent.width - 2 * side
        text: control.title
        textFormat: Text.PlainText
        font { pixelSize: Theme.titleText; weight: Font.Medium }
        color: Theme.textOnPrimary
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 14
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Row {
        id: right
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
    }
}
