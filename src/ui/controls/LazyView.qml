import QtQuick

//! Makes the view of a file when it is first wanted, and keeps it. Nothing of it is loaded before,
//! nor what it builds on.
Loader {
    //! Relative to this folder, or absolute.
    required property url file
    //! Of the view's properties, when it is made.
    property var values: ({})
    property bool wanted: false

    function makeIfWanted() {
        if (wanted && status === Loader.Null)
            setSource(file, values)
    }

    onWantedChanged: makeIfWanted()
    Component.onCompleted: makeIfWanted()
}
