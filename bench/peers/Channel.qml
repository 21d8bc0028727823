import QtQuick
import QtWebChannel
import QtWebEngine

Window {
    id: window

    required property QtObject shell
    required property url address

    width: 390
    height: 844
    visible: true

    WebEngineView {
        anchors.fill: parent
        webChannel: channel

        WebChannel {
            id: channel
            Component.onCompleted: registerObjects({ "shell": window.shell })
        }

        Component.onCompleted: {
            userScripts.collection = [{
                name: "channel",
                sourceUrl: "qrc:/qtwebchannel/qwebchannel.js",
                injectionPoint: WebEngineScript.DocumentCreation,
                worldId: WebEngineScript.MainWorld
            }]
            url = window.address
        }
    }
}
