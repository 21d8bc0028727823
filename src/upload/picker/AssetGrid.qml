import QtQuick
import Vant.Ui
import Vant.Upload

//! The picker's grid: square cells, columns as the settings say.
Item {
    id: view

    required property ImagePickerController controller

    readonly property real cellSide: width / controller.settings.columnNumber
    // In steps, so that a window that changes its width does not read all pictures again.
    readonly property int pictureSide: Math.ceil(cellSide * Screen.devicePixelRatio / 64) * 64

    GridView {
        id: grid
        anchors.fill: parent
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: cellHeight * 2
        cellWidth: view.cellSide
        cellHeight: view.cellSide
        model: view.controller.assets
        Accessible.role: Accessible.List
        Accessible.name: view.controller.title

        delegate: AssetCell {
            width: grid.cellWidth
            height: grid.cellHeight
            controller: view.controller
            pictureSide: view.pictureSide
        }
    }

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.margin, Theme.maximumFormWidth)
        spacing: 12
        visible: view.controller.loaded && view.controller.assets.count === 0

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            source: "qrc:/assets/empty_view_icon.png"
        }

        Text {
            width: parent.width
            text: view.controller.picksVideos ? qsTr("相册里还没有视频") : qsTr("相册里还没有照片")
            textFormat: Text.PlainText
            font.pixelSize: Theme.bodyText
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    LoadingSpinner {
        anchors.centerIn: parent
        visible: !view.controller.loaded
    }
}
