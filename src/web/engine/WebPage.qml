import QtQuick
import QtWebChannel
import QtWebEngine
import Vant.Ui
import Vant.Web

// The engine's view behind a WebView: carries out what it asks and reports what happens.
Item {
    id: root

    required property WebView webView
    //! Of what the shell draws over the page.
    property color accent: Theme.primary
    signal longPressed(point position)

    // The engine does not survive the end of a hidden view's process, and draws what is merely
    // covered. A view that is not seen stands outside of the window instead.
    onVisibleChanged: holder.place()

    Loader {
        id: holder

        property bool hadFocus: false // of the view that is out of the window, or was there before

        function place() {
            if (!item || (item.parent === holder) === root.visible)
                return
            keepFocus()
            item.parent = root.visible ? holder : null
            item.focus = root.visible && hadFocus
        }
        function keepFocus() {
            if (item.parent === holder)
                hadFocus = item.focus
        }

        anchors.fill: parent
        anchors.topMargin: keys.item ? keys.item.barHeight : 0
        sourceComponent: engineView
        // Escape is the page's first. The engine hands back releases alone.
        Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
        Keys.onReleased: event => {
            if (event.key === Qt.Key_Escape)
                root.webView.travel.leave()
        }
        onLoaded: {
            if (root.visible)
                item.focus = hadFocus
            else
                item.parent = null
            root.webView.viewCreated(item)
        }
    }

    Connections {
        target: root.webView
        function onLoadRequested(url) { holder.item.url = url }
        function onHtmlRequested(html) { holder.item.loadHtml(html) }
        function onStopRequested() { holder.item.stop() }
        function onReloadRequested() { holder.item.reload() }
        function onHistoryStepRequested(offset) { holder.item.goBackOrForward(offset) }
        function onScriptRequested(id, script) {
            const webView = root.webView
            // The engine does not survive a result that comes when the view is about to go.
            if (id === 0)
                holder.item.runJavaScript(script)
            else
                holder.item.runJavaScript(script, result => webView.scriptFinished(id, result))
        }
        function onRecreateRequested() {
            holder.keepFocus()
            holder.active = false
            holder.active = true
        }
    }

    Component {
        id: engineView

        WebEngineView {
            id: view

            profile: root.webView.profile
            webChannel: root.webView.bridge ? channel : null
            webChannelWorld: WebEngineScript.ApplicationWorld // out of the page's reach
            backgroundColor: "white"

            settings.playbackRequiresUserGesture: false
            settings.showScrollBars: false
            settings.screenCaptureEnabled: false
            settings.errorPageEnabled: false
            settings.javascriptCanAccessClipboard: true // to write; reading is another setting
            // Without it links that scripts follow would not be reported at all.
            settings.unknownUrlSchemePolicy: WebEngineSettings.AllowAllUnknownUrlSchemes

            PageQuestions {
                webView: root.webView
                view: view
            }
            PageFiles {
                webView: root.webView
                view: view
            }
            PageScale {
                webView: root.webView
                view: view
            }
            WebChannel {
                id: channel
                Component.onCompleted: {
                    if (root.webView.bridge)
                        registerObjects({ "shell": root.webView.bridge })
                }
            }

            onUrlChanged: root.webView.engineUrlChanged(url)
            onLoadProgressChanged: root.webView.loadProgressed(loadProgress)
            onNavigationRequested: request => {
                if (!root.webView.navigationRequested(request.url, request.isMainFrame))
                    request.reject()
            }
            onNewWindowRequested: request =>
                root.webView.newWindowRequested(request.requestedUrl, request.userInitiated)
            onWindowCloseRequested: root.webView.windowCloseRequested()
            onLoadingChanged: info => {
                switch (info.status) {
                case WebEngineView.LoadStartedStatus:
                    root.webView.loadStarted()
                    break
                case WebEngineView.LoadSucceededStatus:
                    root.webView.loadSucceeded()
                    break
                case WebEngineView.LoadFailedStatus:
                    root.webView.loadFailed(info.errorDomain, info.errorCode, info.errorString)
                    break
                case WebEngineView.LoadStoppedStatus:
                    root.webView.loadStopped()
                    break
                }
            }
            onJavaScriptConsoleMessage: (level, message, line, source) =>
                root.webView.consoleMessage(message, line, source)
            onRenderProcessTerminated: (status, exitCode) => root.webView.renderProcessTerminated(exitCode)
            onCertificateError: error => {
                if (root.webView.trustsCertificate(error))
                    error.acceptCertificate()
                else
                    error.rejectCertificate()
            }
            onContextMenuRequested: request => request.accepted = true
            onFullScreenRequested: request => request.accept()
        }
    }

    // Leaves the page every click, scroll and wheel, as no other handler does.
    Item {
        anchors.fill: parent

        PointHandler {
            id: press
            property point start
            onActiveChanged: {
                start = point.position
                active ? held.restart() : held.stop()
                root.webView.inputGiven()
            }
            onPointChanged: {
                const dx = point.position.x - start.x
                const dy = point.position.y - start.y
                if (held.running && dx * dx + dy * dy > 100)
                    held.stop()
            }
        }
    }

    Loader {
        id: keys
        anchors.fill: parent
        active: holder.item !== null
        sourceComponent: PageKeys {
            webView: root.webView
            view: holder.item
        }
    }

    LoadingStrip {
        width: parent.width
        visible: root.webView.loading.slow
        color: root.accent
    }

    Timer {
        id: held
        interval: 600
        onTriggered: root.longPressed(Qt.point(press.start.x / holder.item.zoomFactor,
                                               (press.start.y - holder.anchors.topMargin) / holder.item.zoomFactor))
    }
}
