import QtQuick
import QtQuick.Templates as T

//! A check box of two pictures. It shows `selected` and reports touches by `clicked`; the state is
//! its owner's. `text` is read out, not drawn.
T.CheckBox {
    id: control

    property bool selected: false
    property url uncheckedSource: "qrc:/assets/btn_login_unchecked.png"
    property url checkedSource: "qrc:/assets/btn_login_checked.png"

    implicitWidth: Math.max(Theme.touchSize, picture.width)
    implicitHeight: Math.max(Theme.touchSize, picture.height)
    checked: selected
    nextCheckState: () => checkState
    Accessible.name: text
    Accessible.onPressAction: control.clicked()
    Accessible.onToggleAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    Image {
        id: picture
        anchors.centerIn: parent
        width: 20 * Theme.fontScale
        height: width
        source: control.checked ? control.checkedSource : control.uncheckedSource
        opacity: control.down ? 0.5 : 1
    }

    FocusRing { shown: control.visualFocus }
}
