// The usual way for a page to reach the client that shows it.
function setupWebViewJavascriptBridge(callback) {
    if (window.WebViewJavascriptBridge) return callback(window.WebViewJavascriptBridge);
    if (window.WVJBCallbacks) return window.WVJBCallbacks.push(callback);
    window.WVJBCallbacks = [callback];
    var frame = document.createElement('iframe');
    frame.style.display = 'none';
    frame.src = 'https://__bridge_loaded__';
    document.documentElement.appendChild(frame);
    setTimeout(function () { document.documentElement.removeChild(frame); }, 0);
}
