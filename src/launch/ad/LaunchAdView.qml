import QtQuick
import Vant.Launch
import Vant.Ui

//! Covers the whole window while the launch's advertisement waits, shows and fades.
FocusScope {
    id: view

    required property LaunchAd launchAd
    required property SafeArea safeArea

    readonly property bool showing: launchAd.phase === LaunchAd.Showing
    readonly property bool leaving: launchAd.phase === LaunchAd.Leaving

    visible: launchAd.coversWindow
    focus: visible
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("启动画面")

    NumberAnimation {
        target: view
        property: "opacity"
        running: view.leaving
        from: 1
        to: 0
        duration: view.launchAd.finishAnimateMs
        easing.type: Easing.InOutQuad
    }

    // On a wide window the launch picture stands in the middle of its own colour.
    Rectangle {
        anchors.fill: parent
        visible: !picture.visible
        gradient: Gradient {
            GradientStop { position: 0; color: "#5be3a0" }
            GradientStop { position: 1; color: "#25c17a" }
        }
    }
    Image {
        anchors.fill: parent
        visible: !picture.visible // it would shine through what fades
        source: "qrc:/assets/launch_image.png"
        asynchronous: true
        cache: false // shown once
        fillMode: view.width > view.height ? Image.PreserveAspectFit : Image.PreserveAspectCrop
    }

    LaunchAdPictureView {
        id: picture
        anchors.fill: parent
        visible: view.showing || view.leaving
        picture: view.launchAd.picture
    }

    // What lies beneath takes no touch; the advertisement's own is passed on.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onClicked: mouse => view.launchAd.click(Qt.point(mouse.x, mouse.y))
        onWheel: wheel => wheel.accepted = true
    }

    LazyView {
        anchors {
            top: parent.top
            right: parent.right
            topMargin: view.safeArea.top + 12
            rightMargin: view.safeArea.right + Theme.margin
        }
        focus: true
        visible: view.showing
        file: Qt.resolvedUrl("LaunchAdSkipButton.qml")
        values: ({ focus: true, launchAd: view.launchAd })
        wanted: view.showing
    }
}
