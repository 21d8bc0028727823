import QtQuick
import Vant.Ui

//! Says quietly that a page is on its way.
Item {
    id: strip

    property color color: Theme.primary

    height: 3
    clip: true
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("正在加载")

    Rectangle {
        id: runner
        width: strip.width / 3
        height: parent.height
        color: strip.color

        NumberAnimation on x {
            running: strip.visible
            loops: Animation.Infinite
            from: -runner.width
            to: strip.width
            duration: 1200
            easing.type: Easing.InOutQuad
        }
    }
}
