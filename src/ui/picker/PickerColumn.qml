import QtQuick

//! One wheel of a picker: turned by finger, by mouse wheel and by the arrow keys, or sent to a row by a touch on it.
ListView {
    id: column

    property var texts: []
    property int selectedIndex: 0
    property bool focusShown: false

    signal selected(int index)
    signal keyPressed

    readonly property real rowHeight: Math.max(Theme.touchSize, Math.round(36 * Theme.fontScale))
    readonly property int pageRows: 5
    property bool ready: false

    implicitHeight: pageRows * rowHeight
    model: texts
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    snapMode: ListView.SnapToItem
    highlightRangeMode: ListView.StrictlyEnforceRange
    preferredHighlightBegin: (height - rowHeight) / 2
    preferredHighlightEnd: preferredHighlightBegin + rowHeight
    highlightMoveDuration: Theme.fadeDuration
    highlightMoveVelocity: -1
    keyNavigationWraps: false
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: currentItem ? currentItem.text : ""

    function go(index) {
        currentIndex = Math.max(0, Math.min(count - 1, index))
    }

    Component.onCompleted: {
        currentIndex = selectedIndex
        positionViewAtIndex(currentIndex, ListView.SnapPosition)
        ready = true
    }
    onCurrentIndexChanged: if (ready && currentIndex >= 0) selected(currentIndex)
    Keys.onPressed: event => {
        keyPressed()
        const steps = {
            [Qt.Key_Home]: -count, [Qt.Key_End]: count,
            [Qt.Key_PageUp]: -pageRows, [Qt.Key_PageDown]: pageRows
        }
        event.accepted = event.key in steps
        if (event.accepted)
            go(currentIndex + steps[event.key])
    }

    Rectangle {
        parent: column
        anchors { left: parent.left; right: parent.right; margins: 8; verticalCenter: parent.verticalCenter }
        height: column.rowHeight
        color: "transparent"

        FocusRing { shown: column.activeFocus && column.focusShown }
    }

    // A notch is a row; left to itself the list would move by pixels and come to rest late.
    WheelHandler {
        property real notches: 0

        target: null
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            notches += event.angleDelta.y / 120
            const rows = Math.trunc(notches)
            notches -= rows
            if (rows !== 0)
                column.go(column.currentIndex - rows)
        }
    }

    delegate: Item {
        id: row

        required property int index
        required property string modelData
        readonly property string text: modelData
        //! How many rows it is from the middle.
        readonly property real away: Math.abs(y + height / 2 - column.contentY - column.height / 2) / height

        width: column.width
        height: column.rowHeight
        Accessible.role: Accessible.ListItem
        Accessible.name: text
        Accessible.selectable: true
        Accessible.selected: ListView.isCurrentItem
        Accessible.onPressAction: column.go(index)

        Text {
            anchors { fill: parent; leftMargin: 8; rightMargin: 8 }
            text: row.text
            textFormat: Text.PlainText
            font.pixelSize: Theme.titleText
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 12
            elide: Text.ElideRight
            color: Qt.tint(Theme.text, Qt.rgba(0.62, 0.64, 0.66, Math.min(1, row.away) * 0.85))
            scale: 1 - Math.min(2, row.away) * 0.06
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }

        // Unlike a mouse area it takes two quick touches for two.
        TapHandler { onTapped: column.go(row.index) }
    }
}
