import QtQuick
import QtQuick.Window
import Vant.Launch
import Vant.Ui

Window {
    id: window

    required property Shell shell
    required property LaunchAd launchAd

    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 480
    color: "white"

    RootView {
        id: rootView
        anchors.fill: parent
        shell: window.shell
        enabled: !ad.visible
    }
    LaunchAdView {
        id: ad
        anchors.fill: parent
        launchAd: window.launchAd
        safeArea: window.shell.safeArea
        onVisibleChanged: if (!visible) rootView.takeFocus()
    }
}
