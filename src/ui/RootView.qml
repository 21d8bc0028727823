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

    //! Made when it is first wanted: the first screen does not wait for it.
    component Overlay: Loader {
        property bool wanted: false

        anchors.fill: parent
        active: false
        onWantedChanged: if (wanted) active = true
    }

    //! For what takes the keys, after something else in the window had them.
    function takeFocus() { topmost.forceActiveFocus() }

    Shortcut {
        enabled: root.enabled
        sequences: ["Esc", "Back", StandardKey.Back]
        onActivated: root.shell.back()
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

    Overlay {
        id: dialog
        wanted: root.shell.alertView.visible && !root.shell.alertView.fullScreen
        sourceComponent: AlertDialogView { focus: true; alertView: root.shell.alertView }
    }
    Overlay {
        id: notice
        wanted: root.shell.alertView.visible && root.shell.alertView.fullScreen
        sourceComponent: AlertNoticeView {
            focus: true
            alertView: root.shell.alertView
            topInset: root.safeArea.top
            bottomInset: root.safeArea.bottom
        }
    }
    Overlay {
        id: sheet
        wanted: root.shell.actionSheet.visible
        sourceComponent: ActionSheetView {
            focus: true
            actionSheet: root.shell.actionSheet
            bottomInset: root.safeArea.bottom
        }
    }
    Overlay {
        id: hud
        wanted: root.shell.progressHUD.visible
        sourceComponent: ProgressHUDView { focus: true; progressHUD: root.shell.progressHUD }
    }
    ToastView { anchors.fill: parent; toast: root.shell.toast }
}
