// The document's way to the shell, run in a world of its own: nothing that a page does to its globals reaches in here.
// This script alone holds the channel's transport, says of which origin the document is, and hands texts between the
// shell and bridge.js. Every document has a nonce of its own: what was meant for an earlier document is dropped here.
(() => {
    const transport = window.qt?.webChannelTransport;
    if (!transport)
        return;
    const INVOKE_METHOD = 6, CONNECT_TO_SIGNAL = 7, RESPONSE = 10;
    const BEGIN = %BEGIN_METHOD%, RECEIVE = %RECEIVE_METHOD%, TO_PAGE = %TO_PAGE_SIGNAL%;

    const nonce = Array.from(crypto.getRandomValues(new Uint32Array(2)), n => n.toString(36)).join('.');
    const invoke = (method, argument) => transport.send(`{"type":${INVOKE_METHOD},"object":"shell","id":"${nonce}",`
        + `"method":${method},"args":["${nonce}",${argument}]}`);

    // Shared with bridge.js and with nobody else. Not a part of the document, so that it outlives document.open().
    const port = new EventTarget();

    // One whole JSON value, or it could reach out of its place in the channel's message.
    port.addEventListener('send', ({ detail }) => {
        JSON.parse(detail);
        invoke(RECEIVE, detail);
    });

    // As the channel writes them, keys in the order of the alphabet.
    const response = `,"id":"${nonce}","type":${RESPONSE}}`;
    const signal = `{"args":["${nonce}",`;
    // Used again and again, for making one costs as much as sending it.
    const event = new CustomEvent('receive');
    transport.onmessage = ({ data }) => {
        if (!data.endsWith(response) && !data.startsWith(signal))
            return;
        event.initCustomEvent('receive', false, false, data);
        port.dispatchEvent(event);
    };

    transport.send(JSON.stringify({ type: CONNECT_TO_SIGNAL, object: 'shell', signal: TO_PAGE }));
    invoke(BEGIN, JSON.stringify(self.origin));
    dispatchEvent(new FocusEvent('vant-bridge-port', { relatedTarget: port }));
})();
