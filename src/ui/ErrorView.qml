import QtQuick

//! What stands in place of content that could not be loaded, with a button to try again.
Rectangle {
    id: control

    property url iconSource: "qrc:/assets/error_view_icon.png"
    property string text: qsTr("页面加载失败，请检查网络后重试")
    //! Empty: no button.
    property string buttonText: qsTr("重新加载")

    signal retry

    color: Theme.background

    MouseArea { anchors.fill: parent }

    Flickable {
        anchors.fill: parent
        contentHeight: Math.max(height, column.implicitHeight + 2 * Theme.margin)
        boundsBehavior: Flickable.StopAtBounds

        Column {
            id: column
            anchors.centerIn: parent
            width: Math.min(control.width - 2 * Theme.margin, Theme.maximumFormWidth)
            spacing: 20

            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                source: control.iconSource
            }

            Text {
                width: parent.width
                text: control.text
                font.pixelSize: Theme.bodyText
                color: Theme.secondaryText
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            PrimaryButton {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, parent.width)
                visible: text !== ""
                text: control.buttonText
                onClicked: control.retry()
            }
        }
    }
}
