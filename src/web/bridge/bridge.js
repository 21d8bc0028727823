// The page's side of the bridge, run before any script of the page; transport.js, which runs next, hands it the way to
// the shell. The page gets the bridge once it is parsed.
// A call is [name, number or 0, data], where the number asks for an answer; an answer is [number, data]. Data that is
// absent is left out.
addEventListener('vant-bridge-port', ({ relatedTarget: port }) => {
    const { parse, stringify } = JSON;
    const { queueMicrotask, reportError } = window;
    const dispatch = port.dispatchEvent.bind(port);
    const DEEPEST = 1000; // The shell reads 1,024 levels, and a payload lies in some of its own.

    const handlers = new Map();
    const callbacks = new Map();
    let calls = 0;
    let outgoing = '';

    // Calls of one task travel as one batch. Used again and again, for making an event costs as much as sending it.
    const event = new CustomEvent('send');
    const flush = () => {
        event.initCustomEvent('send', false, false, `[${outgoing}]`);
        outgoing = '';
        dispatch(event);
    };

    const fits = (value, levels) => typeof value !== 'object' || value === null
        || (levels > 0 && Object.values(value).every(part => fits(part, levels - 1)));

    // Every level takes two characters, and a text has none.
    const nestsTooDeep = json => json?.length > 2 * DEEPEST && json[0] !== '"' && !fits(parse(json), DEEPEST);

    // Written out at once: what cannot be written, or read by the shell, fails in the caller's hands, and alone.
    const post = (head, data) => {
        const json = stringify(data);
        if (nestsTooDeep(json))
            throw new RangeError('the payload is nested too deeply');
        const message = json === undefined ? `[${head}]` : `[${head},${json}]`;
        if (outgoing === '')
            queueMicrotask(flush);
        outgoing += outgoing === '' ? message : `,${message}`;
    };

    const callHandler = (handlerName, data, respond) => {
        if (respond === undefined && typeof data === 'function')
            [data, respond] = [undefined, data];
        const number = respond ? ++calls : 0;
        post(`${stringify(`${handlerName}`)},${number}`, data);
        if (respond)
            callbacks.set(number, respond);
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
        handler(data, number ? responseData => post(number, responseData) : () => {});
    };

    // One that fails disturbs no other.
    const forEach = (list, take) => {
        for (const one of list) {
            try {
                take(one);
            } catch (error) {
                reportError(error);
            }
        }
    };

    // A response has its messages as data, a signal as the last of its arguments.
    port.addEventListener('receive', ({ detail }) => {
        const { data, args } = parse(detail);
        forEach(data ?? args?.[1] ?? [],
            message => typeof message[0] === 'number' ? takeAnswer(...message) : takeCall(...message));
    });

    const bridge = {
        registerHandler: (name, handler) => { handlers.set(name, handler); },
        callHandler,
        // Pages of the older contract call these first; there is nothing to do for them.
        init: () => {},
        disableJavscriptAlertBoxSafetyTimeout: () => {},
    };

    // A page waits for the bridge by leaving callbacks here, where it asks for it with a hidden frame, or by an event.
    let waiting = window.WVJBCallbacks;
    let parsed = false;
    const serveWaiting = () => {
        const list = waiting;
        waiting = undefined;
        forEach(Array.from(list ?? []), callback => callback(bridge));
    };
    Reflect.defineProperty(window, 'WVJBCallbacks', {
        configurable: true,
        get: () => waiting,
        set: list => {
            waiting = list;
            if (parsed)
                queueMicrotask(serveWaiting);
            else
                awaitParsed();
        },
    });

    const appear = () => {
        if (parsed)
            return;
        parsed = true;
        // A page's own of that name stays.
        window.WebViewJavascriptBridge ??= bridge;
        serveWaiting();
        const ready = new Event('WebViewJavascriptBridgeReady', { bubbles: true });
        ready.bridge = bridge;
        document.dispatchEvent(ready);
    };
    // Again with each callback that waits: document.open() takes all listeners away.
    const awaitParsed = () => {
        if (document.readyState === 'loading')
            document.addEventListener('readystatechange', appear, { once: true });
        else
            queueMicrotask(appear);
    };
    awaitParsed();
}, { once: true });
