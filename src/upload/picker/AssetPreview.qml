import QtQuick
import Vant.Ui
import Vant.Upload

//! The chosen assets, or all, one a page over the whole screen.
FocusScope {
    id: view

    required property ImagePickerController controller
    property real topInset: 0
    property real bottomInset: 0
    property real leftInset: 0
    property real rightInset: 0

    // Wherever in the preview the keyboard is.
    Keys.onLeftPressed: pages.decrementCurrentIndex()
    Keys.onRightPressed: pages.incrementCurrentIndex()

    Rectangle { anchors.fill: parent; color: "#000000" }

    MouseArea { anchors.fill: parent; hoverEnabled: true }

    ListView {
        id: pages
        anchors.fill: parent
        focus: true
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        highlightMoveDuration: Theme.transitionDuration
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: width
        model: view.controller.previewed
        Accessible.role: Accessible.List
        Accessible.name: qsTr("预览")
        delegate: AssetPage {
            width: pages.width
            height: pages.height
            controller: view.controller
        }
        Component.onCompleted: {
            positionViewAtIndex(view.controller.previewStart, ListView.Beginning)
            currentIndex = view.controller.previewStart
        }
        onWidthChanged: positionViewAtIndex(currentIndex, ListView.Beginning)
    }

    Rectangle {
        width: parent.width
        height: view.topInset + Math.max(Theme.navigationBarHeight, mark.height)
        color: "#80000000"

        NavigationBar {
            anchors {
                left: parent.left
                leftMargin: view.leftInset
                right: parent.right
                rightMargin: view.rightInset + 8
                bottom: parent.bottom
            }
            color: "transparent"
            title: qsTr("%1/%2").arg(pages.currentIndex + 1).arg(pages.count)
            onBack: view.controller.handleBack()

            SelectionButton {
                id: mark
                anchors.verticalCenter: parent.verticalCenter
                visible: pages.currentItem !== null
                number: pages.currentItem?.number ?? 0
                name: pages.currentItem?.name ?? ""
                controller: view.controller
                onClicked: view.controller.toggle(pages.currentItem.filePath)
            }
        }
    }

    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: tools.height + view.bottomInset
        color: "#cc000000"

        PickerToolBar {
            id: tools
            anchors {
                left: parent.left
                leftMargin: view.leftInset
                right: parent.right
                rightMargin: view.rightInset
            }
            controller: view.controller
            dark: true
            color: "transparent"
        }
    }
}
