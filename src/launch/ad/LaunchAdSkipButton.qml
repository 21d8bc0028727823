import QtQuick
import Vant.Launch
import Vant.Ui

//! Ends the advertisement; counts the seconds down that it still has.
Tappable {
    id: button

    required property LaunchAd launchAd

    text: launchAd.skipText
    leftPadding: 16
    rightPadding: 16
    font.pixelSize: Theme.captionText
    focusRadius: height / 2
    onClicked: launchAd.skip()

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: parent.width
            height: Math.max(32, button.implicitContentHeight + 12)
            radius: height / 2
            color: button.down ? "#b3000000" : "#80000000"
        }
    }
    contentItem: Text {
        text: button.text
        textFormat: Text.PlainText
        font: button.font
        color: "#ffffff"
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
