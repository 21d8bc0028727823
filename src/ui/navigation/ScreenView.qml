import QtQuick
import Vant.Ui

//! Shows one screen of a stack and moves it in and out. The screen's QML gets its controller, and
//! the insets where its root has them.
FocusScope {
    id: view

    required property PresentedScreen screen
    property real topInset: 0
    property real bottomInset: 0
    property real leftInset: 0
    property real rightInset: 0

    readonly property bool slidesUp: screen?.transition === PresentedScreen.SlideUp
    //! 0: in place, 1: outside.
    property real offset: 0

    width: parent ? parent.width : 0
    height: parent ? parent.height : 0
    x: slidesUp ? 0 : offset * width
    y: slidesUp ? offset * height : 0
    visible: screen?.phase !== PresentedScreen.Hidden && !screen?.covered
    enabled: !screen?.behind
    focus: screen?.phase === PresentedScreen.Shown && !screen?.covered && !screen?.behind

    function slide(from, to) {
        slideAnimation.stop()
        offset = from
        slideAnimation.to = to
        slideAnimation.start()
    }

    Connections {
        target: view.screen

        function onPhaseChanged() {
            if (view.screen.phase === PresentedScreen.Shown)
                view.offset = 0
            if (!view.screen.animated)
                return
            if (view.screen.phase === PresentedScreen.Appearing)
                view.slide(1, 0)
            else if (view.screen.phase === PresentedScreen.Disappearing)
                view.slide(view.offset, 1)
        }
    }

    NumberAnimation {
        id: slideAnimation
        target: view
        property: "offset"
        duration: Theme.transitionDuration
        easing.type: Easing.OutCubic
        onFinished: view.screen.transitionFinished()
    }

    // What lies beneath takes no touch through a screen's empty places.
    MouseArea { anchors.fill: parent; hoverEnabled: true }

    Loader {
        id: loader
        anchors.fill: parent
        focus: true
        Component.onCompleted: setSource(view.screen.source, { controller: view.screen.controller })
        onLoaded: {
            for (const edge of ["topInset", "bottomInset", "leftInset", "rightInset"]) {
                if (edge in item)
                    item[edge] = Qt.binding(() => view[edge])
            }
            view.screen.viewLoaded()
        }
    }
}
