import QtQuick
import QtWebEngine

Window {
    id: window

    required property WebEngineProfile profile
    required property url address

    width: 390
    height: 844
    visible: true

    WebEngineView {
        anchors.fill: parent
        profile: window.profile
        url: window.address
    }
}
