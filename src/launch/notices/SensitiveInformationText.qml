import QtQuick
import Vant.Launch
import Vant.Ui

//! What is collected and what for: a lead, the items with a dot before each, and a promise.
Column {
    id: view

    required property var information

    spacing: 10

    NoticeText { width: parent.width; text: view.information.lead }

    Column {
        width: parent.width
        spacing: 10

        Repeater {
            model: view.information.items

            Item {
                id: row
                required property string modelData

                width: parent.width
                height: item.height

                Rectangle {
                    x: 4
                    anchors.verticalCenter: parent.verticalCenter
                    width: 6
                    height: 6
                    radius: 3
                    color: "#39cb85"
                }
                NoticeText {
                    id: item
                    x: 20
                    width: parent.width - x
                    text: row.modelData
                    color: Theme.text
                    font.weight: Font.Medium
                    lineHeight: 1
                }
            }
        }
    }

    NoticeText { width: parent.width; text: view.information.closing }
}
