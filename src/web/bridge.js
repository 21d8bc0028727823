// The page's side of the bridge, run before any script of the page. Calls of one task travel as one message, and so do
// their answers. Every document has a nonce of its own: what was meant for an earlier document is dropped here.
(() => {
    const transport = window.qt && window.qt.webChannelTransport;
    if (!transport || window.WebViewJavascriptBridge)
        return;
    const INVOKE_METHOD = 6, CONNECT_TO_SIGNAL = 7, SIGNAL = 1, RESPONSE = 10;
    const TO_PAGE = %TO_PAGE_SIGNAL%;
    const { parse, stringify } = JSON;

    const nonce = Array.from(crypto.getRandomValues(new Uint32Array(4)), n => n.toString(36)).join('');
    const head = `{"type":${INVOKE_METHOD},"object":"shell","method":"receive","args":[{"nonce":"${nonce}",`
        + `"origin":${stringify(location.origin)},"messages":[`;

    const handlers = new Map();
    const callbacks = new Map();
    let outgoing = [];
    let batches = 0;
    let calls = 0;

    const flush = () => {
        const messages = outgoing.join(',');
        outgoing = [];
        transport.send(`${head}${messages}]}],"id":"${nonce}:${++batches}"}`);
    };

    // Written out at once: what cannot be written fails in the caller's hands, and alone.
    const post = message => {
        if (outgoing.push(stringify(message)) === 1)
            queueMicrotask(flush);
    };

    const callHandler = (handlerName, data, respond) => {
        if (respond === undefined && typeof data === 'function')
            [data, respond] = [undefined, data];
        const message = { handlerName, data };
        if (respond) {
            message.callbackId = ++calls;
            callbacks.set(message.callbackId, respond);
        }
        try {
            post(message);
        } catch (error) {
            callbacks.delete(message.callbackId);
            throw error;
        }
    };

    const deliver = message => {
        if (message.responseId !== undefined) {
            const callback = callbacks.get(message.responseId);
            callbacks.delete(message.responseId);
            callback?.(message.responseData);
            return;
        }
        const handler = handlers.get(message.handlerName);
        if (!handler) {
            console.warn(`no page handler for ${message.handlerName}`);
            return;
        }
        const { callbackId } = message;
        handler(message.data, callbackId === undefined
            ? () => {}
            : responseData => post({ responseId: callbackId, responseData }));
    };

    const receive = batch => {
        if (!batch || batch.nonce !== nonce)
            return;
        for (const message of batch.messages) {
            try {
                deliver(message);
            } catch (error) {
                reportError(error);
            }
        }
    };

    const onmessage = ({ data }) => {
        const message = parse(data);
        if (message.type === RESPONSE)
            receive(message.data);
        else if (message.type === SIGNAL)
            receive(message.args[0]);
    };
    // The engine delivers to whatever stands there. The transport itself stays in here: what a page sends must come
    // by way of post(), which tells its origin truly.
    Object.defineProperty(window, 'qt', {
        value: Object.freeze({ webChannelTransport: Object.freeze({ onmessage }) }),
        configurable: false,
        writable: false,
    });

    const bridge = {
        registerHandler: (name, handler) => { handlers.set(name, handler); },
        callHandler,
        // Pages of the older contract call these first; there is nothing to do for them.
        init: () => {},
        disableJavscriptAlertBoxSafetyTimeout: () => {},
    };
    Object.defineProperty(window, 'WebViewJavascriptBridge', { value: bridge });

    // A page may wait for the bridge by leaving callbacks here and asking for it with a hidden frame.
    let waiting;
    const serveWaiting = () => {
        const list = waiting;
        waiting = undefined;
        for (const callback of list ?? []) {
            try {
                callback(bridge);
            } catch (error) {
                reportError(error);
            }
        }
    };
    Object.defineProperty(window, 'WVJBCallbacks', {
        configurable: true,
        get: () => waiting,
        set: list => {
            waiting = list;
            queueMicrotask(serveWaiting);
        },
    });

    document.addEventListener('DOMContentLoaded', () => {
        const ready = new Event('WebViewJavascriptBridgeReady', { bubbles: true });
        ready.bridge = bridge;
        document.dispatchEvent(ready);
    });

    transport.send(stringify({ type: CONNECT_TO_SIGNAL, object: 'shell', signal: TO_PAGE }));
    flush();
})();
