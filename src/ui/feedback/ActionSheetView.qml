import QtQuick
import Vant.Ui

//! Shows the action sheet at the lower edge.
FocusScope {
    id: view

    required property ActionSheet actionSheet
    required property SafeArea safeArea

    visible: actionSheet.visible
    Accessible.role: Accessible.PopupMenu
    Accessible.name: actionSheet.title

    component SheetButton: Tappable {
        id: button

        property bool ruled: true

        width: parent.width
        implicitHeight: Math.max(56, implicitContentHeight + 20)

        background: Rectangle {
            radius: Theme.radius
            color: button.down ? Theme.pressed : Theme.surface

            Rectangle { visible: button.ruled; width: parent.width; height: 1; color: Theme.line }
        }
        contentItem: Text {
            text: button.text
            textFormat: Text.PlainText
            font.pixelSize: Theme.titleText
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }

    ModalScrim {
        anchors.fill: parent
        onTapped: view.actionSheet.cancel()
    }

    Column {
        anchors {
            bottom: parent.bottom
            bottomMargin: view.safeArea.bottom + 10
            horizontalCenter: parent.horizontalCenter
        }
        width: Math.min(parent.width - 20, Theme.maximumFormWidth)
        spacing: 10

        Rectangle {
            width: parent.width
            height: Math.min(choices.implicitHeight,
                             view.height - cancelButton.height - view.safeArea.bottom - 60)
            radius: Theme.radius
            color: Theme.surface

            Flickable {
                anchors.fill: parent
                contentHeight: choices.implicitHeight
                boundsBehavior: Flickable.StopAtBounds
                clip: true

                Column {
                    id: choices
                    width: parent.width

                    Column {
                        id: heading
                        visible: view.actionSheet.title !== "" || view.actionSheet.message !== ""
                        width: parent.width
                        padding: 16
                        spacing: 6

                        Repeater {
                            model: [view.actionSheet.title, view.actionSheet.message]

                            Text {
                                required property string modelData

                                width: heading.width - 32
                                visible: text !== ""
                                text: modelData
                                textFormat: Text.PlainText
                                font.pixelSize: Theme.captionText
                                color: Theme.secondaryText
                                horizontalAlignment: Text.AlignHCenter
                                wrapMode: Text.Wrap
                                Accessible.role: Accessible.StaticText
                                Accessible.name: text
                            }
                        }
                    }

                    Repeater {
                        model: view.actionSheet.actions

                        SheetButton {
                            required property string modelData
                            required property int index

                            text: modelData
                            ruled: index > 0 || heading.visible
                            focus: index === 0
                            onClicked: view.actionSheet.choose(index)
                        }
                    }
                }
            }
        }

        SheetButton {
            id: cancelButton
            text: view.actionSheet.cancelTitle
            ruled: false
            onClicked: view.actionSheet.cancel()
        }
    }
}
