import QtQuick
import Vant.Ui

//! A picture of the album, read in the background; a broken picture in its place where there is
//! none to read.
Image {
    id: picture

    //! In pixels.
    required property int side

    signal failed

    sourceSize: Qt.size(side, side)
    asynchronous: true
    Accessible.ignored: true
    onStatusChanged: {
        if (status === Image.Error)
            failed()
    }

    Image {
        anchors.centerIn: parent
        visible: picture.status === Image.Error
        source: "qrc:/assets/picker_damaged.png"
    }
}
