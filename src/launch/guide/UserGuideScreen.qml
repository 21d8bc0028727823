import QtQuick
import Vant.Launch
import Vant.Ui

//! The view of UserGuideViewController.
FocusScope {
    id: screen

    required property UserGuideViewController controller
    focus: true
    property real topInset: 0
    property real bottomInset: 0
    property real rightInset: 0

    readonly property bool onLastPage: pages.currentIndex === pages.count - 1

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("使用引导")

    ListView {
        id: pages
        anchors.fill: parent
        focus: true
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        highlightMoveDuration: Theme.transitionDuration
        boundsBehavior: Flickable.StopAtBounds
        model: screen.controller.pages
        Keys.onRightPressed: incrementCurrentIndex()
        Keys.onLeftPressed: decrementCurrentIndex()

        delegate: Rectangle {
            id: page

            required property var modelData

            width: pages.width
            height: pages.height
            color: modelData.color

            Image {
                anchors.fill: parent
                source: page.modelData.picture
                // A wide window shows the whole drawing on the page's own colour.
                fillMode: width > height * 0.75 ? Image.PreserveAspectFit : Image.PreserveAspectCrop
                asynchronous: true
                Accessible.ignored: true
            }

            Column {
                anchors.horizontalCenter: parent.horizontalCenter
                y: page.height * 0.655
                width: Math.min(page.width - 32, Theme.maximumFormWidth)
                spacing: 10

                Text {
                    width: parent.width
                    text: page.modelData.heading
                    textFormat: Text.PlainText
                    font { pixelSize: Math.round(24 * Theme.fontScale); weight: Font.DemiBold }
                    color: Theme.text
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Text {
                    width: parent.width
                    text: page.modelData.text
                    textFormat: Text.PlainText
                    font.pixelSize: Theme.bodyText
                    color: "#4a4f57"
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    lineHeight: 1.2
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }

    TextLink {
        anchors {
            top: parent.top
            right: parent.right
            topMargin: screen.topInset + 8
            rightMargin: screen.rightInset + 8
        }
        visible: !screen.onLastPage
        text: qsTr("跳过")
        color: "#4a4f57"
        font.pixelSize: Theme.bodyText
        onClicked: screen.controller.leave()
    }

    Item {
        id: foot
        anchors {
            bottom: parent.bottom
            bottomMargin: screen.bottomInset + Math.max(16, screen.height * 0.04)
            horizontalCenter: parent.horizontalCenter
        }
        width: Math.min(parent.width - 96, 280)
        height: 48

        Row {
            anchors.centerIn: parent
            spacing: 8
            visible: !screen.onLastPage

            Repeater {
                model: pages.count

                Rectangle {
                    required property int index
                    readonly property bool current: index === pages.currentIndex

                    width: current ? 20 : 8
                    height: 8
                    radius: 4
                    color: current ? "#39cb85" : "#33000000"
                    Behavior on width { NumberAnimation { duration: Theme.fadeDuration } }
                }
            }
        }

        PrimaryButton {
            anchors.fill: parent
            visible: screen.onLastPage
            text: qsTr("立即体验")
            onClicked: screen.controller.leave()
        }
    }
}
