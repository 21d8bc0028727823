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

        function await(id, request) {
            if (id === 0)
                request.dialogReject()
            else
                pending[id] = request
        }
    }

    QtObject {
        id: features

        function mattersOf(feature) {
            switch (feature) {
            case WebEngineView.MediaVideoCapture: return [PagePermissions.Camera]
            case WebEngineView.MediaAudioCapture: return [PagePermissions.Microphone]
            case WebEngineView.MediaAudioVideoCapture: return [PagePermissions.Camera, PagePermissions.Microphone]
            case WebEngineView.Geolocation: return [PagePermissions.Position]
            case WebEngineView.Notifications: return [PagePermissions.Notifications]
            }
            return [] // the screen, and what later engines think of
        }
        function lastingFor(matter) {
            return matter === PagePermissions.Position ? WebEngineView.Geolocation
                 : matter === PagePermissions.Notifications ? WebEngineView.Notifications : -1
        }
    }

    Connections {
        target: root.webView.dialogs

        function onAnswered(id, accepted, input, password) {
            const request = dialogs.pending[id]
            delete dialogs.pending[id]
            if (!accepted)
                request.dialogReject()
            else if (request.realm !== undefined)
                request.dialogAccept(input, password)
            else
                request.dialogAccept(input)
        }
    }

    Connections {
        target: root.webView.dialogs.permissions

        function onAnswered(origin, feature, granted) {
            root.view.grantFeaturePermission(origin, feature, granted)
        }
        function onSettled(origin, matter, granted) {
            const feature = features.lastingFor(matter)
            if (feature !== -1)
                root.view.grantFeaturePermission(origin, feature, granted)
        }
    }

    Connections {
        target: root.view

        function onJavaScriptDialogRequested(request) {
            request.accepted = true
            const shown = root.webView.dialogs
            const origin = request.securityOrigin
            switch (request.type) {
            case JavaScriptDialogRequest.DialogTypeAlert:
                dialogs.await(shown.showAlert(origin, request.message), request)
                break
            case JavaScriptDialogRequest.DialogTypeConfirm:
                dialogs.await(shown.showConfirm(origin, request.message), request)
                break
            case JavaScriptDialogRequest.DialogTypePrompt:
                dialogs.await(shown.showPrompt(origin, request.message, request.defaultText), request)
                break
            default:
                request.dialogAccept() // a page cannot keep the user from leaving it
            }
        }
        function onColorDialogRequested(request) {
            request.accepted = true
            dialogs.await(root.webView.dialogs.showColour(root.view.url, request.color.toString()), request)
        }
        function onAuthenticationDialogRequested(request) {
            request.accepted = true
            dialogs.await(root.webView.dialogs.showLogin(request.url, request.realm,
                          request.type === AuthenticationDialogRequest.AuthenticationTypeProxy ? request.proxyHost : ""), request)
        }
        function onUrlChanged() {
            root.webView.dialogs.permissions.pageShown(root.view.url)
        }
        function onFeaturePermissionRequested(origin, feature) {
            root.webView.dialogs.permissions.ask(origin, feature, features.mattersOf(feature))
        }
    }
}
