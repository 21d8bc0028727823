import QtQuick

//! Text with links in it: each entry of `links` has a `title`, which occurs in the text, and a
//! `name` to report.
FocusScope {
    id: control

    property string text
    property var links: []
    property color color: "#000000"
    property color linkColor: Theme.link
    property int pixelSize: Theme.captionText
    property int horizontalAlignment: Text.AlignLeft

    signal linkActivated(string name)

    implicitWidth: body.implicitWidth
    implicitHeight: body.implicitHeight

    function escaped(plain) {
        return plain.replace(/&/g, "&amp;").replace(/</g, "&lt;")
    }

    function richText() {
        let rich = escaped(text)
        for (const link of links) {
            const title = escaped(link.title)
            rich = rich.replace(title, "<a style=\"text-decoration:none;color:" + linkColor
                + "\" href=\"" + link.name + "\">" + title + "</a>")
        }
        return rich
    }

    TextEdit {
        id: body
        width: control.width
        text: control.richText()
        textFormat: TextEdit.RichText
        wrapMode: TextEdit.Wrap
        horizontalAlignment: control.horizontalAlignment
        color: control.color
        font.pixelSize: control.pixelSize
        readOnly: true
        selectByMouse: false
        activeFocusOnPress: false
        onLinkActivated: name => control.linkActivated(name)
        Accessible.role: Accessible.StaticText
        Accessible.name: control.text
        Accessible.readOnly: true
    }

    // For keyboard and screen reader. A link that runs over two lines has its item on the first; the
    // rest of it is touched in the text itself.
    Repeater {
        model: control.links

        Item {
            id: link

            required property var modelData
            readonly property string text: modelData.title
            readonly property int start: control.text.indexOf(text)
            readonly property int end: start + text.length
            readonly property rect place: {
                void [body.width, body.contentHeight, body.text, body.font.pixelSize]
                if (start < 0 || end > body.length)
                    return Qt.rect(0, 0, 0, 0)
                const from = body.positionToRectangle(start)
                const to = body.positionToRectangle(end)
                const right = to.y > from.y ? body.width : to.x
                return Qt.rect(from.x, from.y, right - from.x, from.height)
            }

            function activate() {
                control.linkActivated(modelData.name)
            }

            x: place.x
            y: place.y - 6
            width: place.width
            height: place.height + 12
            visible: start >= 0
            activeFocusOnTab: true
            Accessible.role: Accessible.Link
            Accessible.name: text
            Accessible.onPressAction: activate()
            Keys.onReturnPressed: activate()
            Keys.onEnterPressed: activate()
            Keys.onSpacePressed: activate()

            MouseArea { anchors.fill: parent; onClicked: link.activate() }
            FocusRing { shown: link.activeFocus; radius: 4 }
        }
    }
}
