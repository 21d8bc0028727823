import QtQuick
import Vant.Ui

//! What an ErrorView shows.
Rectangle {
    id: page

    required property ErrorView errorView

    color: Theme.background

    MouseArea { anchors.fill: parent }

    Flickable {
        anchors.fill: parent
        contentHeight: Math.max(height, column.implicitHeight + 2 * Theme.margin)
        boundsBehavior: Flickable.StopAtBounds

        Column {
            id: column
            anchors.centerIn: parent
            width: Math.min(page.width - 2 * Theme.margin, Theme.maximumFormWidth)
            spacing: 20

            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                source: page.errorView.iconSource
            }

            Text {
                width: parent.width
                text: page.errorView.text
                textFormat: Text.PlainText
                font.pixelSize: Theme.bodyText
                color: Theme.secondaryText
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Text {
                width: parent.width
                visible: text !== ""
                text: page.errorView.reason
                textFormat: Text.PlainText
                font.pixelSize: Theme.captionText
                color: "#666666"
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            PrimaryButton {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, parent.width)
                visible: text !== ""
                text: page.errorView.buttonText
                onClicked: page.errorView.retry()
            }
        }
    }
}
