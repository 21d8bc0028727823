import QtQuick
import Vant.Ui

//! A paragraph of a notice.
Text {
    textFormat: Text.PlainText
    font.pixelSize: Math.round(14 * Theme.fontScale)
    color: "#4a4f57"
    wrapMode: Text.Wrap
    lineHeight: 1.25
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
