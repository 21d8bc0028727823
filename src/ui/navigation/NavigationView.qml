import QtQuick
import Vant.Ui

//! The view of a NavigationController: its bar, and its screens below.
FocusScope {
    id: view

    required property NavigationController controller
    property real topInset: 0
    property real bottomInset: 0
    property real leftInset: 0
    property real rightInset: 0

    readonly property bool barHidden: controller.navigationBarHidden

    Rectangle {
        id: header
        width: parent.width
        height: view.barHidden ? 0 : view.topInset + bar.height
        visible: !view.barHidden
        color: Theme.primary

        NavigationBar {
            id: bar
            anchors {
                left: parent.left
                right: parent.right
                bottom: parent.bottom
                leftMargin: view.leftInset
                rightMargin: view.rightInset
            }
            title: view.controller.topViewController ? view.controller.topViewController.title : ""
            backVisible: view.controller.backVisible
            onBack: view.controller.backPressed()
        }
    }

    FocusScope {
        anchors {
            top: header.bottom
            left: parent.left
            right: parent.right
            bottom: parent.bottom
        }
        focus: true
        clip: true

        Repeater {
            model: view.controller.screens

            ScreenView {
                topInset: view.barHidden ? view.topInset : 0
                bottomInset: view.bottomInset
                leftInset: view.leftInset
                rightInset: view.rightInset
            }
        }
    }
}
