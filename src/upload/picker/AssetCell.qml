import QtQuick
import Vant.Ui
import Vant.Upload

//! One cell of the grid: an asset with its selection button, or the camera.
Item {
    id: cell

    required property bool camera
    required property string filePath
    required property url image
    required property bool video
    required property string duration
    required property int number
    required property string name
    required property ImagePickerController controller
    required property int pictureSide

    readonly property bool locked: number === 0 && controller.selection.full

    Tappable {
        anchors { fill: parent; margins: 1 }
        visible: !cell.camera
        text: cell.video && cell.duration !== "" ? cell.name + " " + cell.duration : cell.name
        focusRadius: 0
        onClicked: cell.controller.preview(cell.filePath)

        background: Rectangle { color: Theme.pressed }
        contentItem: AlbumPicture {
            source: cell.image
            side: cell.pictureSide
            fillMode: Image.PreserveAspectCrop
            onFailed: cell.controller.imageFailed(cell.filePath)

            Rectangle {
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
                height: length.height + 4
                visible: cell.video
                color: "#80000000"

                Image {
                    anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
                    source: "qrc:/assets/picker_clip.png"
                }
                Text {
                    id: length
                    anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
                    text: cell.duration
                    textFormat: Text.PlainText
                    font.pixelSize: Theme.captionText
                    color: "#ffffff"
                    Accessible.ignored: true
                }
            }
            Rectangle {
                anchors.fill: parent
                visible: cell.locked
                color: cell.controller.settings.cannotSelectLayerColor
            }
        }
    }

    SelectionButton {
        anchors { top: parent.top; right: parent.right; margins: 1 }
        visible: !cell.camera
        opacity: cell.locked ? 0.3 : 1
        number: cell.number
        name: cell.name
        controller: cell.controller
        onClicked: cell.controller.toggle(cell.filePath)
    }

    Loader {
        anchors { fill: parent; margins: 1 }
        active: cell.camera
        sourceComponent: Tappable {
            text: cell.controller.picksVideos ? qsTr("录像") : qsTr("拍照")
            focusRadius: 0
            onClicked: cell.controller.openCamera()

            background: Rectangle { color: Theme.pressed }
            contentItem: Item {
                Column {
                    anchors.centerIn: parent
                    spacing: 2

                    Image {
                        anchors.horizontalCenter: parent.horizontalCenter
                        source: cell.controller.picksVideos ? "qrc:/assets/picker_video_camera.png"
                                                            : "qrc:/assets/picker_camera.png"
                    }
                    Text {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: cell.controller.picksVideos ? qsTr("录像") : qsTr("拍照")
                        textFormat: Text.PlainText
                        font.pixelSize: Theme.captionText
                        color: Theme.text
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
