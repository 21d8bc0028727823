import QtQuick
import Vant.Ui
import Vant.Web

// A page on black, lying on its side where the window is upright. There is no bar: the page itself
// offers the way back, unless it could not be loaded.
ScreenFrame {
    id: root

    required property OMOutLinkLandscapeViewController controller
    //! What there is for the page without a keyboard in front of it.
    readonly property size extent: Qt.size(width - leftInset - rightInset,
                                           height - topInset - bottomInset)

    color: "black"
    statusBarColor: "black"
    onExtentChanged: controller.viewWillTransitionToSize(extent)

    Item {
        readonly property bool turned: root.controller.turned

        anchors.centerIn: parent
        width: turned ? parent.height : parent.width
        height: turned ? parent.width : parent.height
        rotation: turned ? 90 : 0

        WebPage {
            anchors.fill: parent
            webView: root.controller.webView
        }

        ErrorView {
            anchors.fill: parent
            visible: root.controller.errorView.visible
            reason: root.controller.errorView.reason
            onRetry: root.controller.errorView.retry()

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
