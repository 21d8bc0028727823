import QtQuick
import Vant.Ui

//! A box over a darkened screen: a heading, what stands between the lines (scrolled when it does
//! not fit), and the two answers.
FocusScope {
    id: view

    property string title
    property string refuseText
    property string agreeText
    default property alias content: body.data

    signal refused
    signal agreed

    Accessible.role: Accessible.Dialog
    Accessible.name: title

    ModalScrim { anchors.fill: parent }

    Rectangle {
        id: box

        anchors.centerIn: parent
        width: Math.min(parent.width - 40, 360 * Math.max(1, Theme.fontScale))
        height: Math.min(parent.height - 80,
            heading.height + body.height + buttons.height + 2)
        radius: Theme.radius
        color: Theme.surface

        // The box itself is no way out.
        MouseArea { anchors.fill: parent }

        Text {
            id: heading
            width: parent.width
            padding: 18
            text: view.title
            textFormat: Text.PlainText
            font { pixelSize: Theme.titleText; weight: Font.Medium }
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Rectangle { y: heading.height; width: parent.width; height: 1; color: "#f0f2f5" }

        Flickable {
            id: scroll
            y: heading.height + 1
            width: parent.width
            height: box.height - heading.height - buttons.height - 2
            contentHeight: body.height
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            activeFocusOnTab: contentHeight > height
            Keys.onDownPressed: contentY = Math.min(contentY + 40, contentHeight - height)
            Keys.onUpPressed: contentY = Math.max(contentY - 40, 0)

            Column {
                id: body
                x: 20
                width: parent.width - 40
                topPadding: 14
                bottomPadding: 14
                spacing: 10
            }
        }

        // There is more to read.
        Rectangle {
            anchors.bottom: buttons.top
            anchors.bottomMargin: 1
            width: parent.width
            height: 28
            visible: !scroll.atYEnd
            gradient: Gradient {
                GradientStop { position: 0; color: "#00ffffff" }
                GradientStop { position: 1; color: "#ffffffff" }
            }
        }

        Rectangle { anchors.bottom: buttons.top; width: parent.width; height: 1; color: "#f0f2f5" }

        Row {
            id: buttons
            anchors.bottom: parent.bottom
            anchors.horizontalCenter: parent.horizontalCenter
            width: parent.width - 40
            topPadding: 14
            bottomPadding: 14
            spacing: 12

            NoticeButton {
                width: (parent.width - parent.spacing) / 2
                text: view.refuseText
                color: "#cccccc"
                textColor: Theme.text
                onClicked: view.refused()
            }
            NoticeButton {
                width: (parent.width - parent.spacing) / 2
                text: view.agreeText
                color: "#39cb85"
                textColor: "#ffffff"
                focus: true
                onClicked: view.agreed()
            }
        }
    }
}
