import QtQuick
import Vant.Ui
import Vant.Upload

//! The view of ImagePickerController.
FocusScope {
    id: screen
    focus: true

    required property ImagePickerController controller
    property real topInset: 0
    property real bottomInset: 0
    property real leftInset: 0
    property real rightInset: 0

    readonly property var settings: controller.settings

    Connections {
        target: AlbumImages
        function onDurationKnown(filePath, milliseconds) {
            screen.controller.durationKnown(filePath, milliseconds)
        }
    }

    ScreenFrame {
        anchors.fill: parent
        focus: screen.controller.stage === ImagePickerController.Grid
        visible: focus
        topInset: screen.topInset
        bottomInset: screen.bottomInset
        leftInset: screen.leftInset
        rightInset: screen.rightInset
        statusBarColor: screen.settings.navigationBarColor
        color: Theme.surface
        background: Rectangle {
            width: parent.width
            height: screen.topInset + bar.height
            color: screen.settings.navigationBarColor
        }

        NavigationBar {
            id: bar
            width: parent.width
            color: screen.settings.navigationBarColor
            title: screen.controller.title
            backVisible: false

            TextLink {
                text: qsTr("取消")
                color: screen.settings.barItemTextColor
                rightPadding: Theme.margin
                onClicked: screen.controller.cancel()
            }
        }

        AssetGrid {
            anchors { top: bar.bottom; bottom: tools.top; left: parent.left; right: parent.right }
            controller: screen.controller
        }

        PickerToolBar {
            id: tools
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            controller: screen.controller
            previewVisible: true
        }
    }

    Loader {
        anchors.fill: parent
        focus: active
        active: screen.controller.stage === ImagePickerController.Preview
        sourceComponent: AssetPreview {
            focus: true
            controller: screen.controller
            topInset: screen.topInset
            bottomInset: screen.bottomInset
            leftInset: screen.leftInset
            rightInset: screen.rightInset
        }
    }

    // By its file: where the media module is missing, only the camera is.
    Loader {
        anchors.fill: parent
        focus: active
        active: screen.controller.stage === ImagePickerController.Capture
        onActiveChanged: {
            if (active)
                setSource("CaptureView.qml", { controller: screen.controller, focus: true })
        }
        onStatusChanged: {
            if (status === Loader.Error)
                Qt.callLater(screen.controller.captureFailed, "the camera view cannot be made")
        }
    }
}
