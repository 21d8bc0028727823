import QtMultimedia
import QtQuick
import Vant.Ui
import Vant.Upload

//! The camera: takes one picture, or one clip, into the file that the controller names.
Rectangle {
    id: view

    required property ImagePickerController controller
    readonly property bool recording: recorder.recorderState === MediaRecorder.RecordingState

    color: "#000000"

    Component.onDestruction: session.videoOutput = null

    CaptureSession {
        id: session
        camera: Camera {
            id: camera
            active: true
            onErrorOccurred: (error, text) => view.controller.captureFailed(text)
        }
        audioInput: view.controller.picksVideos ? microphone : null
        imageCapture: ImageCapture {
            id: imageCapture
            onImageSaved: view.controller.captured()
            onErrorOccurred: (id, error, text) => view.controller.captureFailed(text)
        }
        recorder: MediaRecorder {
            id: recorder
            quality: MediaRecorder.HighQuality
            mediaFormat { fileFormat: MediaFormat.MPEG4 }
            onRecorderStateChanged: {
                if (recorderState === MediaRecorder.StoppedState && error === MediaRecorder.NoError)
                    view.controller.captured()
            }
            onErrorOccurred: (error, text) => view.controller.captureFailed(text)
        }
        videoOutput: picture.item
    }

    AudioInput { id: microphone }

    MovingPicture { id: picture; anchors.fill: parent }

    TextLink {
        anchors { left: parent.left; bottom: parent.bottom; margins: 24 }
        visible: !view.recording
        text: qsTr("取消")
        color: "#ffffff"
        onClicked: view.controller.handleBack()
    }

    Text {
        anchors { top: parent.top; topMargin: 48; horizontalCenter: parent.horizontalCenter }
        visible: view.recording
        text: qsTr("%1 秒").arg(Math.floor(recorder.duration / 1000))
        textFormat: Text.PlainText
        font.pixelSize: Theme.titleText
        color: "#ffffff"
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Tappable {
        id: shutter
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 48 }
        implicitWidth: 72
        implicitHeight: 72
        focus: true
        focusRadius: 36
        enabled: camera.active && (view.controller.picksVideos || imageCapture.readyForCapture)
        text: !view.controller.picksVideos ? qsTr("拍照") : view.recording ? qsTr("停止录像") : qsTr("开始录像")
        onClicked: {
            if (view.recording)
                return recorder.stop()
            const path = view.controller.captureLocation()
            if (!view.controller.picksVideos)
                return imageCapture.captureToFile(path)
            recorder.outputLocation = view.controller.fileUrl(path)
            recorder.record()
        }

        background: Rectangle {
            radius: 36
            color: "transparent"
            border { width: 4; color: "#ffffff" }

            Rectangle {
                anchors.centerIn: parent
                width: view.recording ? 28 : 56
                height: width
                radius: view.recording ? 6 : 28
                color: view.controller.picksVideos ? Theme.error : "#ffffff"
                opacity: shutter.down ? 0.5 : 1
            }
        }
    }
}
