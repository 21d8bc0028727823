import QtQuick
import Vant.Services
import Vant.Ui

//! The view of OMShareView.
FocusScope {
    id: screen

    required property OMShareView controller
    property real bottomInset: 0

    //! How far the panel is from its place, in its own height: 1 is below the window.
    property real outside: arrived && !controller.leaving ? 0 : 1
    property bool arrived: false

    Accessible.role: Accessible.PopupMenu
    Accessible.name: heading.text
    Component.onCompleted: arrived = true

    Behavior on outside {
        SpringAnimation {
            spring: 5
            damping: 0.4
            epsilon: 0.002
        }
    }
    //! Not only when it has swung to rest: what is out of sight must not take the touches.
    readonly property bool gone: controller.leaving && outside >= 1
    onGoneChanged: if (gone) controller.left()

    ModalScrim {
        anchors.fill: parent
        opacity: 1 - Math.min(1, Math.max(0, screen.outside))
        onTapped: screen.controller.dismiss()
    }

    Rectangle {
        id: panel
        width: parent.width
        // The spring swings past its place: what is below the window must not be missing then.
        height: content.implicitHeight + screen.bottomInset + content.implicitHeight
        y: parent.height - (content.implicitHeight + screen.bottomInset) * (1 - screen.outside)
        radius: Theme.radius
        color: Theme.surface

        MouseArea { anchors.fill: parent }

        Column {
            id: content
            width: parent.width

            Text {
                id: heading
                width: parent.width
                topPadding: Theme.margin
                bottomPadding: 12
                text: qsTr("分享到")
                textFormat: Text.PlainText
                font.pixelSize: Theme.captionText
                color: Theme.secondaryText
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            Row {
                id: targets
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(parent.width - 16, Theme.maximumFormWidth)
                bottomPadding: 20

                Repeater {
                    model: screen.controller.titleArray

                    Tappable {
                        id: target

                        required property string modelData
                        required property int index

                        width: targets.width / screen.controller.titleArray.length
                        text: modelData
                        focus: index === 0
                        padding: 6
                        onClicked: screen.controller.buttonClicked(index)

                        contentItem: Column {
                            spacing: 6
                            opacity: target.down ? 0.5 : 1

                            Image {
                                anchors.horizontalCenter: parent.horizontalCenter
                                source: "qrc:/assets/" + screen.controller.imageArray[target.index]
                                        + ".png"
                                Accessible.ignored: true
                            }
                            Text {
                                width: parent.width
                                text: target.text
                                textFormat: Text.PlainText
                                font.pixelSize: Theme.captionText
                                color: Qt.rgba(0.2, 0.2, 0.2, 1)
                                horizontalAlignment: Text.AlignHCenter
                                wrapMode: Text.Wrap
                                Accessible.ignored: true
                            }
                        }
                    }
                }
            }

            Tappable {
                id: closeButton
                width: parent.width
                implicitHeight: Math.max(52, implicitContentHeight + 20)
                text: qsTr("关闭")
                font.pixelSize: Theme.titleText
                onClicked: screen.controller.dismiss()

                background: Rectangle {
                    color: closeButton.down ? Theme.pressed : Theme.surface

                    Rectangle { width: parent.width; height: 1; color: Theme.line }
                }
                contentItem: Text {
                    text: closeButton.text
                    textFormat: Text.PlainText
                    font: closeButton.font
                    color: Theme.text
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    Accessible.ignored: true
                }
            }
        }
    }
}
