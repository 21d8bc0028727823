import QtMultimedia
import QtQuick
import Vant.Ui

//! Shows what a player plays or a camera sees; `item` is the output to give to them.
Loader {
    id: root

    //! Fills the place and cuts what stands over, instead of showing the whole picture.
    property bool cropped: false

    sourceComponent: GraphicsInfo.api === GraphicsInfo.Software ? canvas : output

    Component {
        id: output
        VideoOutput {
            fillMode: root.cropped ? VideoOutput.PreserveAspectCrop : VideoOutput.PreserveAspectFit
        }
    }
    Component {
        id: canvas
        VideoCanvas {
            fillMode: root.cropped ? VideoCanvas.PreserveAspectCrop : VideoCanvas.PreserveAspectFit
        }
    }
}
