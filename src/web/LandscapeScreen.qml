import QtQuick
import Vant.Ui
import Vant.Web

// A page on black, lying on its side where the window is upright. There is no bar: the page itself
// offers the way back, unless it could not be loaded.
FocusScope {
    id: root

    required property OMOutLinkLandscapeViewController controller
    property real topInset: 0
    property real bottomInset: 0
    property real leftInset: 0
    property real rightInset: 0

    Rectangle { anchors.fill: parent; color: "black" }

    Item {
        id: area

        readonly property size extent: Qt.size(width, height)

        anchors {
            fill: parent
            topMargin: root.topInset
            bottomMargin: root.bottomInset
            leftMargin: root.leftInset
            rightMargin: root.rightInset
        }
        onExtentChanged: root.controller.viewWillTransitionToSize(extent)

        Item {
            readonly property bool turned: root.controller.turned

            anchors.centerIn: parent
            width: turned ? area.height : area.width
            height: turned ? area.width : area.height
            rotation: turned ? 90 : 0

            WebPage {
                anchors.fill: parent
                webView: root.controller.webView
            }

            ErrorView {
                anchors.fill: parent
                visible: root.controller.errorViewVisible
                onRetry: root.controller.errorViewButtonDidPress()

                IconButton {
                    z: 1
                    anchors { top: parent.top; left: parent.left; margins: 8 }
                    text: qsTr("返回")
                    source: "qrc:/assets/mini_style_navi_close.png"
                    onClicked: root.controller.backLastVC()
                }
            }
        }
    }
}
