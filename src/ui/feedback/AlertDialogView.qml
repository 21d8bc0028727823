import QtQuick
import Vant.Ui

//! Shows the alert that is at the head of the queue.
FocusScope {
    id: view

    required property AlertView alertView

    visible: alertView.visible && !alertView.fullScreen
    Accessible.role: Accessible.Dialog
    Accessible.name: alertView.title + "\n" + alertView.message

    ModalScrim { anchors.fill: parent }

    Rectangle {
        id: box

        readonly property int buttonCount: view.alertView.buttons.length
        readonly property bool sideBySide: buttonCount === 2

        readonly property real room: parent.height
            - (Qt.inputMethod.visible ? Qt.inputMethod.keyboardRectangle.height : 0)

        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.round((room - height) / 2)
        width: Math.min(parent.width - 48, 300 * Math.max(1, Theme.fontScale))
        height: Math.min(room - 48, message.implicitHeight + buttons.height)
        radius: Theme.radius
        color: Theme.surface

        MouseArea { anchors.fill: parent }

        Flickable {
            id: scroll
            width: parent.width
            height: parent.height - buttons.height
            contentHeight: message.implicitHeight
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            Column {
                id: message
                width: parent.width
                topPadding: 22
                bottomPadding: 22
                leftPadding: 20
                rightPadding: 20
                spacing: 10

                Text {
                    width: parent.width - 40
                    visible: text !== ""
                    text: view.alertView.title
                    textFormat: Text.PlainText
                    font { pixelSize: Theme.titleText; weight: Font.Medium }
                    color: Theme.text
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }

                Text {
                    width: parent.width - 40
                    visible: text !== ""
                    text: view.alertView.message
                    textFormat: Text.PlainText
                    font.pixelSize: Theme.bodyText
                    color: "#4a4f57"
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    lineHeight: 1.2
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }

                ColourGrid {
                    id: grid
                    width: parent.width - 40
                    visible: colours.length > 0
                    colours: view.alertView.colours
                    chosen: view.alertView.input
                    onChose: colour => view.alertView.input = colour
                }

                IconTextField {
                    id: input
                    width: parent.width - 40
                    visible: view.alertView.hasInput
                    focus: visible
                    text: view.alertView.input
                    placeholderText: view.alertView.hasPassword ? view.alertView.inputName : ""
                    Accessible.name: view.alertView.inputName
                    onTextEdited: view.alertView.input = text
                    onAccepted: view.alertView.hasPassword
                        ? password.forceActiveFocus() : view.alertView.press(box.buttonCount - 1)
                }

                IconTextField {
                    id: password
                    width: parent.width - 40
                    visible: view.alertView.hasPassword
                    password: true
                    text: view.alertView.password
                    placeholderText: qsTr("密码")
                    onTextEdited: view.alertView.password = text
                    onAccepted: view.alertView.press(box.buttonCount - 1)
                }
            }
        }

        Grid {
            id: buttons
            anchors.bottom: parent.bottom
            width: parent.width
            columns: box.sideBySide ? 2 : 1

            Repeater {
                model: view.alertView.buttons

                Tappable {
                    id: button
                    required property string modelData
                    required property int index
                    readonly property bool isLast: index === box.buttonCount - 1

                    width: box.sideBySide ? box.width / 2 : box.width
                    implicitHeight: Math.max(50, implicitContentHeight + 20)
                    text: modelData
                    focus: isLast && !view.alertView.hasInput
                    onClicked: view.alertView.press(index)

                    background: Rectangle {
                        radius: Theme.radius
                        color: button.down ? Theme.pressed : "transparent"

                        Rectangle { width: parent.width; height: 1; color: Theme.line }
                        Rectangle {
                            visible: box.sideBySide && button.index === 1
                            width: 1
                            height: parent.height
                            color: Theme.line
                        }
                    }
                    contentItem: Text {
                        text: button.text
                        textFormat: Text.PlainText
                        font {
                            pixelSize: Theme.bodyText
                            weight: button.isLast ? Font.Medium : Font.Normal
                        }
                        color: button.isLast ? Theme.primaryPressed : "#4a4f57"
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                        wrapMode: Text.Wrap
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
