import QtMultimedia
import QtQuick
import Vant.Ui

//! Plays a clip from its beginning; a touch pauses it, and lets it go on.
Tappable {
    id: control

    required property url source
    readonly property bool playing: player.playbackState === MediaPlayer.PlayingState
    property bool failed: false

    text: playing ? qsTr("暂停") : qsTr("播放")
    onClicked: playing ? player.pause() : player.play()
    Component.onCompleted: player.play()
    // A player that outlives its picture for a moment writes into freed memory.
    Component.onDestruction: {
        player.stop()
        player.videoOutput = null
    }

    MediaPlayer {
        id: player
        source: control.source
        videoOutput: picture.item
        // Without a device to hear it from, the sound would keep the clip from playing.
        audioOutput: devices.audioOutputs.length > 0 ? sound : null
        onErrorOccurred: control.failed = true
    }

    MediaDevices { id: devices }
    AudioOutput { id: sound }

    contentItem: MovingPicture { id: picture }

    Image {
        anchors.centerIn: parent
        visible: !control.playing && !control.failed
        source: "qrc:/assets/picker_play.png"
    }
}
