import QtQuick
import QtWebChannel
import QtWebEngine
import Vant.Web

// The engine's view behind a WebView: carries out what it asks and reports what happens.
Item {
    id: root

    required property WebView webView
    signal longPressed(point position)

    Loader {
        id: holder
        anchors.fill: parent
        sourceComponent: engineView
        onLoaded: root.webView.viewCreated(item)
    }

    QtObject {
        id: dialogs
        property var pending: ({}) // requests of the page that await their answer, by number
    }

    Connections {
        target: root.webView.host

        function onDialogAnswered(id, accepted, input) {
            const request = dialogs.pending[id]
            if (!request)
                return // another view's
            delete dialogs.pending[id]
            accepted ? request.dialogAccept(input) : request.dialogReject()
        }
    }

    Connections {
        target: root.webView
        function onLoadRequested(url) { holder.item.url = url }
        function onHtmlRequested(html) { holder.item.loadHtml(html) }
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
            holder.active = false
            holder.active = true
        }
    }

    Connections {
        target: root.webView.profile

        function onDownloadRequested(download) {
            // The profile serves every view of its class of pages.
            if (download.view !== holder.item)
                return
            const host = root.webView.host
            download.downloadDirectory = host.downloadDirectory
            download.accept()
            download.isFinishedChanged.connect(() => {
                if (download.isFinished)
                    host.downloadEnded(download.downloadFileName,
                                       download.state === WebEngineDownloadRequest.DownloadCompleted)
            })
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
            // Without it links that scripts follow would not be reported at all.
            settings.unknownUrlSchemePolicy: WebEngineSettings.AllowAllUnknownUrlSchemes

            WebChannel {
                id: channel
                Component.onCompleted: {
                    if (root.webView.bridge)
                        registerObjects({ "shell": root.webView.bridge })
                }
            }

            onUrlChanged: root.webView.engineUrlChanged(url)
            onNavigationRequested: request => {
                if (!root.webView.decidePolicy(request.url, request.isMainFrame, false))
                    request.reject()
            }
            onNewWindowRequested: request => root.webView.decidePolicy(request.requestedUrl, true, true)
            onLoadingChanged: info => {
                switch (info.status) {
                case WebEngineView.LoadStartedStatus:
                    root.webView.loadStarted()
                    break
                case WebEngineView.LoadSucceededStatus:
                    root.webView.loadSucceeded()
                    break
                case WebEngineView.LoadFailedStatus:
                    root.webView.loadFailed(info.errorDomain === WebEngineLoadingInfo.HttpStatusCodeDomain,
                                            info.errorString)
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
            onJavaScriptDialogRequested: request => {
                request.accepted = true
                const host = root.webView.host
                switch (request.type) {
                case JavaScriptDialogRequest.DialogTypeAlert:
                    dialogs.pending[host.showAlert(request.message)] = request
                    break
                case JavaScriptDialogRequest.DialogTypeConfirm:
                    dialogs.pending[host.showConfirm(request.message)] = request
                    break
                case JavaScriptDialogRequest.DialogTypePrompt:
                    dialogs.pending[host.showPrompt(request.message, request.defaultText)] = request
                    break
                default:
                    request.dialogAccept() // a page cannot keep the user from leaving it
                }
            }
            onContextMenuRequested: request => request.accepted = true
            onFullScreenRequested: request => request.accept()
            // Pages reach the device through the bridge alone.
            onFeaturePermissionRequested: (origin, feature) => grantFeaturePermission(origin, feature, false)
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
            }
            onPointChanged: {
                const dx = point.position.x - start.x
                const dy = point.position.y - start.y
                if (held.running && dx * dx + dy * dy > 100)
                    held.stop()
            }
        }
    }

    Timer {
        id: held
        interval: 600
        onTriggered: root.longPressed(Qt.point(press.start.x / holder.item.zoomFactor,
                                               press.start.y / holder.item.zoomFactor))
    }
}
