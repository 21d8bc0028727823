import QtQuick

//! A form: a column of at most 480 in the middle, scrolled when it does not fit, and scrolled so
//! that the field in use is seen above the keyboard.
Flickable {
    id: form

    property real spacing: 0
    property real margin: 24
    default property alias content: column.data

    contentWidth: width
    contentHeight: Math.max(height, column.height)
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    readonly property Item focusedItem: Window.activeFocusItem

    function showFocusedItem() {
        let inside = focusedItem
        while (inside && inside !== column)
            inside = inside.parent
        if (!inside || focusedItem === column)
            return
        const top = focusedItem.mapToItem(column, 0, 0).y
        const bottom = top + focusedItem.height
        if (bottom > contentY + height - 8)
            contentY = Math.min(bottom + 8, contentHeight) - height
        if (top < contentY)
            contentY = Math.max(0, top - 8)
    }

    onFocusedItemChanged: showFocusedItem()
    onHeightChanged: showFocusedItem()

    Column {
        id: column
        x: (form.width - width) / 2
        width: Math.min(form.width - 2 * form.margin, Theme.maximumFormWidth)
        spacing: form.spacing
    }
}
