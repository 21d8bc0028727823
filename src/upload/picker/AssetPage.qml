import QtQuick
import Vant.Ui
import Vant.Upload

//! One page of the preview: the whole picture, or a clip that plays when it is touched.
Item {
    id: page

    required property string filePath
    required property url image
    required property bool video
    required property string duration
    required property int number
    required property string name
    required property ImagePickerController controller

    readonly property bool isCurrentItem: ListView.isCurrentItem

    onIsCurrentItemChanged: player.active = false

    AlbumPicture {
        anchors.fill: parent
        visible: player.status !== Loader.Ready
        source: page.image + "/whole"
        side: Math.max(Screen.width, Screen.height) * Screen.devicePixelRatio
        fillMode: Image.PreserveAspectFit
        Accessible.ignored: false
        Accessible.role: Accessible.Graphic
        Accessible.name: page.name
        onFailed: page.controller.imageFailed(page.filePath)

        LoadingSpinner {
            anchors.centerIn: parent
            visible: parent.status === Image.Loading && page.isCurrentItem
            color: "#ffffff"
        }
    }

    // By its file: where the media module is missing, only clips do not play.
    Loader {
        id: player
        anchors.fill: parent
        active: false
        onActiveChanged: {
            if (active)
                setSource("ClipPlayer.qml", { source: page.controller.fileUrl(page.filePath) })
        }
    }

    IconButton {
        anchors.centerIn: parent
        visible: page.video && !player.active
        text: qsTr("播放")
        source: "qrc:/assets/picker_play.png"
        sourceSize: Qt.size(64, 64)
        Accessible.ignored: !page.isCurrentItem
        onClicked: player.active = true
    }

    Text {
        anchors { centerIn: parent; verticalCenterOffset: 60 }
        width: parent.width - 2 * Theme.margin
        visible: player.status === Loader.Error || (player.item?.failed ?? false)
        text: qsTr("无法播放该视频")
        textFormat: Text.PlainText
        font.pixelSize: Theme.bodyText
        color: "#ffffff"
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
