import QtQuick
import QtWebEngine
import Vant.Ui
import Vant.Web

// Draws a page as large as it and the user want.
Item {
    id: root

    required property WebView webView
    required property WebEngineView view

    function apply() {
        const factor = root.webView.zoomFactor(root.view.width, Theme.fontScale)
        if (root.view.width > 0 && Math.abs(root.view.zoomFactor - factor) > 0.001)
            root.view.zoomFactor = factor
    }

    Connections {
        target: root.webView
        function onViewportRead() { root.apply() }
    }
    Connections {
        target: root.view
        function onWidthChanged() { root.apply() }
        // Another host begins at the size of the engine.
        function onUrlChanged() { root.apply() }
    }
}
