import QtMultimedia
import QtQuick
import Vant.Upload

//! Shows what a player plays or a camera sees; `item` is the output to give to them.
Loader {
    sourceComponent: GraphicsInfo.api === GraphicsInfo.Software ? canvas : output

    Component { id: output; VideoOutput { } }
    Component { id: canvas; ClipCanvas { } }
}
