import QtQuick
import Vant.Ui

//! All that the window shows: the screens, and over them alert, sheet, indicator and toast.
Item {
    id: root

    required property Shell shell

    readonly property SafeArea safeArea: shell.safeArea
    //! What takes input; all else is behind it.
    readonly property Item topmost: shell.progressHUD.visible ? hud
        : shell.actionSheet.visible ? sheet
        : !shell.alertView.visible ? screens
        : shell.alertView.fullScreen ? notice : dialog

    onTopmostChanged: takeFocus()

    //! For what takes the keys, after something else in the window had them.
    function takeFocus() { topmost.forceActiveFocus() }

    Shortcut {
        enabled: root.enabled
        sequences: ["Esc", "Back", StandardKey.Back]
        onActivated: root.shell.back()
    }

    MouseArea {
        z: 1
        anchors.fill: parent
        acceptedButtons: Qt.BackButton
        onClicked: root.shell.back()
    }

    // The blank placeholder.
    Rectangle { anchors.fill: parent; color: Theme.surface }

    FocusScope {
        id: screens
        anchors.fill: parent
        focus: true
        enabled: root.topmost === screens

        Repeater {
            model: root.shell.navigator.screens

            ScreenView {
                topInset: root.safeArea.top
                bottomInset: root.safeArea.bottom
                leftInset: root.safeArea.left
                rightInset: root.safeArea.right
            }
        }
    }

    LazyView {
        id: dialog
        anchors.fill: parent
        file: "AlertDialogView.qml"
        values: ({ focus: true, alertView: root.shell.alertView })
        wanted: root.shell.alertView.visible && !root.shell.alertView.fullScreen
    }
    LazyView {
        id: notice
        anchors.fill: parent
        file: "AlertNoticeView.qml"
        values: ({ focus: true, alertView: root.shell.alertView, safeArea: root.safeArea })
        wanted: root.shell.alertView.visible && root.shell.alertView.fullScreen
    }
    LazyView {
        id: sheet
        anchors.fill: parent
        file: "ActionSheetView.qml"
        values: ({ focus: true, actionSheet: root.shell.actionSheet, safeArea: root.safeArea })
        wanted: root.shell.actionSheet.visible
    }
    LazyView {
        id: hud
        anchors.fill: parent
        file: "ProgressHUDView.qml"
        values: ({ focus: true, progressHUD: root.shell.progressHUD })
        wanted: root.shell.progressHUD.visible
    }
    LazyView {
        anchors.fill: parent
        file: "ToastView.qml"
        values: ({ toast: root.shell.toast })
        wanted: root.shell.toast.visible
    }
}
