import QtQuick
import QtWebEngine
import Vant.Web

// What a page asks its user: the engine's requests, carried to whoever shows them and back.
Item {
    id: root

    required property WebView webView
    required property WebEngineView view

    QtObject {
        id: dialogs
        property var pending: ({}) // requests that await their answer, by number
    }

    Connections {
        target: root.webView.dialogs

        function onAnswered(id, accepted, input) {
            const request = dialogs.pending[id]
            delete dialogs.pending[id]
            accepted ? request.dialogAccept(input) : request.dialogReject()
        }
    }

    Connections {
        target: root.view

        function onJavaScriptDialogRequested(request) {
            request.accepted = true
            const shown = root.webView.dialogs
            const origin = request.securityOrigin
            let id = 0
            switch (request.type) {
            case JavaScriptDialogRequest.DialogTypeAlert:
                id = shown.showAlert(origin, request.message)
                break
            case JavaScriptDialogRequest.DialogTypeConfirm:
                id = shown.showConfirm(origin, request.message)
                break
            case JavaScriptDialogRequest.DialogTypePrompt:
                id = shown.showPrompt(origin, request.message, request.defaultText)
                break
            default:
                request.dialogAccept() // a page cannot keep the user from leaving it
                return
            }
            if (id === 0)
                request.dialogReject()
            else
                dialogs.pending[id] = request
        }
        // Pages reach the device through the bridge alone.
        function onFeaturePermissionRequested(origin, feature) {
            root.view.grantFeaturePermission(origin, feature, false)
        }
    }
}
