// The page's side of the bridge, run before any script of the page. Calls of one task travel as one batch, and so do
// their answers. Every document has a nonce of its own: what was meant for an earlier document is dropped here.
// A call is [name, number or 0, data], where the number asks for an answer; an answer is [number, data]. Data that is
// absent is left out.
(() => {
    const transport = window.qt && window.qt.webChannelTransport;
    if (!transport || window.WebViewJavascriptBridge)
        return;
    const INVOKE_METHOD = 6, CONNECT_TO_SIGNAL = 7, SIGNAL = 1, RESPONSE = 10;
    const BEGIN = %BEGIN_METHOD%, RECEIVE = %RECEIVE_METHOD%, TO_PAGE = %TO_PAGE_SIGNAL%;
    const { parse, stringify } = JSON;

    const nonce = Array.from(crypto.getRandomValues(new Uint32Array(2)), n => n.toString(36)).join('.');
    const invoke = (method, argument) => transport.send(`{"type":${INVOKE_METHOD},"object":"shell","id":"${nonce}",`
        + `"method":${method},"args":["${nonce}",${argument}]}`);

    const handlers = new Map();
    const callbacks = new Map();
    let outgoing = [];
    let calls = 0;

    const flush = () => {
        const messages = outgoing.join(',');
        outgoing = [];
        invoke(RECEIVE, `[${messages}]`);
    };

    // Written out at once: what cannot be written fails in the caller's hands, and alone.
    const post = (message, data) => {
        if (data !== undefined)
            message.push(data);
        if (outgoing.push(stringify(message)) === 1)
            queueMicrotask(flush);
    };

    const callHandler = (handlerName, data, respond) => {
        if (respond === undefined && typeof data === 'function')
            [data, respond] = [undefined, data];
        const number = respond ? ++calls : 0;
        if (respond)
            callbacks.set(number, respond);
        try {
            post([`${handlerName}`, number], data);
        } catch (error) {
            callbacks.delete(number);
            throw error;
        }
    };

    const takeAnswer = (number, data) => {
        const callback = callbacks.get(number);
        callbacks.delete(number);
        callback?.(data);
    };

    const takeCall = (handlerName, number, data) => {
        const handler = handlers.get(handlerName);
        if (!handler) {
            console.warn(`no page handler for ${handlerName}`);
            return;
        }
        handler(data, number ? responseData => post([number], responseData) : () => {});
    };

    const receive = (document, messages) => {
        if (document !== nonce || !messages)
            return;
        for (const message of messages) {
            try {
                if (typeof message[0] === 'number')
                    takeAnswer(...message);
                else
                    takeCall(...message);
            } catch (error) {
                reportError(error);
            }
        }
    };

    const onmessage = ({ data }) => {
        const message = parse(data);
        if (message.type === RESPONSE)
            receive(message.id, message.data);
        else if (message.type === SIGNAL)
            receive(...message.args);
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
    invoke(BEGIN, stringify(location.origin));
})();
