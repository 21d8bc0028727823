import QtQuick
import Vant.Ui

//! The view of PickerViewController: a sheet with the wheels, between a cancelling and a confirming button.
FocusScope {
    id: screen

    required property PickerViewController controller
    property real bottomInset: 0

    //! How far the sheet is from its place, in its own height: 1 is below the window.
    property real outside: 1
    property bool keyboardUsed: false

    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: controller.title
    Keys.onReturnPressed: controller.confirm()
    Keys.onEnterPressed: controller.confirm()
    Component.onCompleted: slide.start()

    Connections {
        target: screen.controller
        function onLeavingChanged() {
            slide.to = 1
            slide.restart()
        }
    }

    NumberAnimation {
        id: slide
        target: screen
        property: "outside"
        to: 0
        duration: Theme.transitionDuration
        easing.type: Easing.OutCubic
        onFinished: {
            if (screen.controller.leaving)
                screen.controller.left()
        }
    }

    ModalScrim {
        anchors.fill: parent
        opacity: 1 - screen.outside
        onTapped: screen.controller.cancel()
    }

    Rectangle {
        id: sheet
        width: parent.width
        height: bar.height + wheels.height + 16 + screen.bottomInset
        y: parent.height - height * (1 - screen.outside)
        color: Theme.surface

        MouseArea { anchors.fill: parent }

        Item {
            id: bar
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, Theme.maximumFormWidth)
            height: Math.max(52, heading.implicitHeight + 20)

            Rectangle {
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
                height: 1
                color: Theme.line
            }
            TextLink {
                id: cancelButton
                anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
                text: qsTr("取消")
                color: Theme.secondaryText
                onClicked: screen.controller.cancel()
            }
            Text {
                id: heading
                anchors {
                    left: cancelButton.right
                    right: confirmButton.left
                    verticalCenter: parent.verticalCenter
                }
                text: screen.controller.title
                textFormat: Text.PlainText
                font { pixelSize: Theme.bodyText; weight: Font.Medium }
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 12
                color: Theme.text
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            TextLink {
                id: confirmButton
                anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
                text: qsTr("确定")
                font.weight: Font.Medium
                onClicked: screen.controller.confirm()
            }
        }

        Item {
            id: wheels
            anchors { top: bar.bottom; topMargin: 8; horizontalCenter: parent.horizontalCenter }
            width: Math.min(parent.width, Theme.maximumFormWidth)
            height: Math.min(first.implicitHeight, screen.height * 0.5)

            Rectangle {
                anchors { left: parent.left; right: parent.right; margins: 8; verticalCenter: parent.verticalCenter }
                height: first.rowHeight
                radius: 8
                color: Theme.background
            }

            PickerColumn {
                id: first
                width: screen.controller.hasSecondColumn ? parent.width / 2 : parent.width
                height: parent.height
                focus: true
                texts: screen.controller.firstTexts
                selectedIndex: screen.controller.firstIndex
                onSelected: index => screen.controller.firstIndex = index
                focusShown: screen.keyboardUsed
                onKeyPressed: screen.keyboardUsed = true
                KeyNavigation.right: second
            }
            PickerColumn {
                id: second
                x: parent.width / 2
                width: parent.width / 2
                height: parent.height
                visible: screen.controller.hasSecondColumn
                texts: screen.controller.secondTexts
                selectedIndex: screen.controller.secondIndex
                onSelected: index => screen.controller.secondIndex = index
                focusShown: screen.keyboardUsed
                onKeyPressed: screen.keyboardUsed = true
                KeyNavigation.left: first
            }
        }
    }
}
