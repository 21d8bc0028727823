import QtQuick
import Vant.Ui
import Vant.Upload

//! The bar below the grid and the preview: what is chosen, and the way on.
Rectangle {
    id: bar

    required property ImagePickerController controller
    property bool previewVisible: false
    property bool dark: false

    readonly property bool anyChosen: controller.selection.count > 0

    implicitHeight: ok.height + 12
    color: dark ? "#cc000000" : Theme.surface

    Rectangle {
        width: parent.width
        height: 1
        visible: !bar.dark
        color: Theme.line
    }

    TextLink {
        id: preview
        anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
        visible: bar.previewVisible
        enabled: bar.anyChosen
        text: qsTr("预览")
        color: enabled ? Theme.text : Theme.secondaryText
        onClicked: bar.controller.previewSelection()
    }

    Text {
        anchors {
            left: preview.visible ? preview.right : parent.left
            leftMargin: preview.visible ? 4 : Theme.margin
            right: ok.left
            rightMargin: 8
            verticalCenter: parent.verticalCenter
        }
        text: qsTr("已选 %1/%2").arg(bar.controller.selection.count).arg(bar.controller.selection.limit)
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionText
        color: bar.dark ? "#ffffff" : Theme.secondaryText
        elide: Text.ElideRight
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Tappable {
        id: ok

        readonly property color fill: enabled ? bar.controller.settings.okButtonNormalColor
                                              : bar.controller.settings.okButtonDisabledColor

        anchors { right: parent.right; rightMargin: Theme.margin; verticalCenter: parent.verticalCenter }
        enabled: bar.anyChosen
        text: bar.controller.doneText
        leftPadding: 20
        rightPadding: 20
        focusRadius: height / 2
        // With a page's colour both states have the same.
        opacity: enabled ? 1 : 0.6
        onClicked: bar.controller.done()

        background: Rectangle {
            y: 3
            height: ok.height - 6
            radius: height / 2
            color: ok.down ? Qt.darker(ok.fill, 1.15) : ok.fill
        }
        contentItem: Text {
            text: ok.text
            textFormat: Text.PlainText
            font: ok.font
            color: bar.controller.settings.textColorOn(ok.fill)
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
}
