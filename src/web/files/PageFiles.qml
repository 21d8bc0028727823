import QtQuick
import QtWebEngine
import Vant.Web

// The files that a page hands out.
Item {
    id: root

    required property WebView webView
    required property WebEngineView view

    Connections {
        target: root.webView.profile

        function onDownloadRequested(download) {
            // The profile serves every view of its class of pages.
            if (download.view === root.view)
                root.webView.downloadRequested(download)
        }
    }
}
