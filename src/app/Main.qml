import QtQuick
import QtQuick.Window
import Vant.Launch
import Vant.Ui

Window {
    id: window

    required property Shell shell
    required property LaunchAd launchAd

    minimumWidth: 320
    minimumHeight: 480
    color: "white"

    RootView {
        id: rootView
        anchors.fill: parent
        shell: window.shell
        enabled: !ad.active
    }
    Loader {
        id: ad
        anchors.fill: parent
        active: window.launchAd.coversWindow
        focus: active
        sourceComponent: LaunchAdView {
            launchAd: window.launchAd
            safeArea: window.shell.safeArea
        }
        onActiveChanged: if (!active) rootView.takeFocus()
    }
}
