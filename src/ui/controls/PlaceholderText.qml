import QtQuick
import QtQuick.Templates as T

//! The text of an empty field, made smaller where it would not fit.
Text {
    required property T.TextField field

    x: field.leftPadding
    width: field.width - field.leftPadding - field.rightPadding
    height: field.height
    visible: field.text === "" && field.preeditText === ""
    text: field.placeholderText
    textFormat: Text.PlainText
    color: field.placeholderTextColor
    font: field.font
    verticalAlignment: Text.AlignVCenter
    fontSizeMode: Text.HorizontalFit
    minimumPixelSize: 11
    Accessible.ignored: true
}
