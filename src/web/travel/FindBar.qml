import QtQuick
import QtWebEngine
import Vant.Ui

//! A text to find in the page, how often it is there, and the ways to the next place.
Rectangle {
    id: bar
    objectName: "findBar"

    required property WebEngineView view
    property int count: 0
    property int current: 0

    signal closed

    function takeFocus() {
        field.forceActiveFocus()
        field.selectAll()
    }
    function find(flags) {
        view.findText(field.text, flags)
    }

    height: field.height + 12
    color: Theme.surface
    Component.onCompleted: takeFocus()
    Component.onDestruction: view.findText("")

    Connections {
        target: bar.view
        function onFindTextFinished(result) {
            bar.count = result.numberOfMatches
            bar.current = result.activeMatch
        }
    }

    // What lies beneath takes no touch.
    MouseArea { anchors.fill: parent }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }

    SearchField {
        id: field
        anchors { left: parent.left; leftMargin: 8; right: places.left; verticalCenter: parent.verticalCenter }
        placeholderText: qsTr("在页面中查找")
        onTextChanged: bar.find(0)
        Keys.onReturnPressed: event => bar.find(event.modifiers & Qt.ShiftModifier ? WebEngineView.FindBackward : 0)
    }

    Text {
        id: places
        anchors { right: buttons.left; verticalCenter: parent.verticalCenter }
        width: Math.max(implicitWidth + 8, 44)
        text: field.text === "" ? "" : "%1/%2".arg(bar.current).arg(bar.count)
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionText
        color: "#666666"
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: qsTr("第 %1 处，共 %2 处").arg(bar.current).arg(bar.count)
    }

    Row {
        id: buttons
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }

        TextLink {
            text: qsTr("上一处")
            font.pixelSize: Theme.captionText
            enabled: bar.count > 0
            opacity: enabled ? 1 : 0.4
            onClicked: bar.find(WebEngineView.FindBackward)
        }
        TextLink {
            text: qsTr("下一处")
            font.pixelSize: Theme.captionText
            enabled: bar.count > 0
            opacity: enabled ? 1 : 0.4
            onClicked: bar.find(0)
        }
        IconButton {
            text: qsTr("关闭")
            source: "qrc:/assets/icon_clear.png"
            sourceSize: Qt.size(18, 18)
            onClicked: bar.closed()
        }
    }
}
