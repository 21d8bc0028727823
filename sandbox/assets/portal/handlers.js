// One card for each thing that the client can do, made from the table below. A page that includes this file
// defines setupWebViewJavascriptBridge and has an element with the id "handlers".
(function () {
    var origin = location.origin;
    var at = function (host, path) { return 'http://127.0.0.' + host + ':' + location.port + '/' + path; };
    var colours = ['#278bea', '#f08a24', '#3dd187'];
    var presses = 0;
    var NOTHING = '此功能不返回结果';
    var later = function (name) { return '结果稍后由 ' + name + ' 送回'; };

    var handlers = [
        { name: 'detectOnline', title: '检测网络', answers: true },
        { name: 'getRequestUrl', title: '获取站点地址', answers: true },
        { name: 'getAppInfo', title: '获取应用信息', answers: true },
        { name: 'changeStatusColor', title: '状态栏颜色', note: NOTHING,
            data: function () { return { color: colours[presses++ % colours.length] }; } },
        { name: 'setLongClickSaveImg', title: '长按保存图片', note: NOTHING,
            data: function () { return { able: 1 }; } },
        { name: 'scanQrCode', title: '扫一扫', note: later('onQrResult2H5') },
        { name: 'getBDLocation', title: '获取位置', note: later('onGetBDLocation') },
        { name: 'getWechatAuthCode', title: '微信授权', note: later('onWechatResult2H5') },
        { name: 'slicingUpload', title: '上传照片或视频', note: later('onSlicingUpload'), data: function () {
            return { siteURl: at(7, ''), upload_server: 'file/chunkDone', checkFile_server: 'file/check',
                checkChunk_server: 'file/checkChunk', complete_upload_server: 'file/complete',
                isVideoSelect: true, isCameraSelect: true, isFileSelect: false, fileNumLimit: 9,
                upfileType: 'image,video', maxFileSingleSizeLimit: 209715200, chunkSize: 524288,
                column_key: 'homework', uploadType: '1', themeColor: '#3dd187' };
        } },
        { name: 'share', title: '分享图片', note: NOTHING,
            data: function () { return { imgUrl: origin + '/images/poster.png' }; } },
        { name: 'linkShare', title: '分享链接', note: NOTHING, data: function () {
            return { obj: { url: origin + '/portal/plain.html', title: '校园开放日', content: '欢迎来看看我们的学校',
                imageUrl: origin + '/images/school-1.png' } };
        } },
        { name: 'jump2OutlinkPage', title: '打开外部页面', note: NOTHING, data: function () {
            return { obj: { title: '校园公告', url: origin + '/portal/outlink.html', color: '#278bea' } };
        } },
        { name: 'jump2OutlinkLandscapePage', title: '打开横屏页面', note: NOTHING,
            data: function () { return { url: origin + '/portal/landscape.html' }; } },
        { name: 'quickLoginApp', title: '快捷登录并打开', note: NOTHING,
            data: function () { return { href: origin + '/portal/plain.html?title=' + encodeURIComponent('快捷登录') }; } },
        { name: 'jump2LoginPage', title: '返回登录页', note: NOTHING, danger: true },
        { name: 'logout', title: '退出登录', note: NOTHING, danger: true }
    ];
    var functions = [
        { name: 'onQrResult2H5', title: '扫码结果' },
        { name: 'onGetBDLocation', title: '位置结果' },
        { name: 'onWechatResult2H5', title: '微信授权结果' },
        { name: 'onSlicingUpload', title: '上传结果' },
        { name: 'pageEcho', title: '回声', echo: true }
    ];

    function typeOf(value) {
        return value === null ? 'null' : Array.isArray(value) ? 'array' : typeof value;
    }

    // Shows the JSON and what it is, for 1 and "1" are not the same answer.
    function describe(value) {
        var text = value === undefined ? '(无数据)' : JSON.stringify(value);
        if (typeOf(value) === 'object' && 'result' in value)
            return text + ' [result: ' + typeOf(value.result) + ']';
        return text + ' [' + typeOf(value) + ']';
    }

    function show(name, text) {
        var output = document.getElementById('out-' + name);
        if (!output) return;
        output.textContent = text;
        output.classList.add('fresh');
    }

    function element(tag, properties, children) {
        var made = Object.assign(document.createElement(tag), properties);
        (children || []).forEach(function (child) { made.appendChild(child); });
        return made;
    }

    // The payload that someone has typed instead of the usual one; an empty box means none at all.
    function payloadOf(handler) {
        var box = document.getElementById('data-' + handler.name);
        if (box && box.dataset.edited) return box.value === '' ? undefined : JSON.parse(box.value);
        var data = handler.data ? handler.data() : undefined;
        if (box && data !== undefined) box.value = JSON.stringify(data, null, 1);
        return data;
    }

    function call(handler) {
        var data;
        try { data = payloadOf(handler); } catch (error) { return show(handler.name, '参数不是 JSON：' + error.message); }
        show(handler.name, handler.answers ? '已调用，等待结果…' : '已调用，' + (handler.note || NOTHING));
        setupWebViewJavascriptBridge(function (bridge) {
            var answer = function (result) { show(handler.name, describe(result)); };
            if (data === undefined) bridge.callHandler(handler.name, answer);
            else bridge.callHandler(handler.name, data, answer);
        });
    }

    function handlerCard(handler) {
        var box = element('textarea', { id: 'data-' + handler.name, spellcheck: false });
        box.setAttribute('aria-label', handler.name + ' 的参数');
        box.oninput = function () { box.dataset.edited = 'yes'; };
        return element('section', { className: 'card' }, [
            element('div', { className: 'row' }, [
                element('button', { id: 'btn-' + handler.name, type: 'button', textContent: handler.title,
                    className: handler.danger ? 'danger' : '', onclick: function () { call(handler); } }),
                element('span', { className: 'soft', textContent: handler.name })]),
            element('output', { id: 'out-' + handler.name, textContent: handler.note || '按下按钮查看结果' }),
            element('details', {}, [element('summary', { textContent: '自定参数（JSON）' }), box])]);
    }

    function functionCard(page) {
        return element('section', { className: 'card' }, [
            element('div', { className: 'row' }, [
                element('b', { textContent: page.title }),
                element('span', { className: 'soft', textContent: page.name })]),
            element('output', { id: 'out-' + page.name, textContent: '尚未收到' })]);
    }

    var only = (document.currentScript.dataset.only || '').split(' ').filter(Boolean);
    var wanted = function (entry) { return only.length === 0 || only.indexOf(entry.name) >= 0; };
    handlers.filter(wanted).forEach(function (handler) {
        document.getElementById('handlers').appendChild(handlerCard(handler));
    });
    functions.filter(wanted).forEach(function (page) {
        document.getElementById('functions').appendChild(functionCard(page));
    });
    setupWebViewJavascriptBridge(function (bridge) {
        functions.filter(wanted).forEach(function (page) {
            bridge.registerHandler(page.name, function (data, respond) {
                show(page.name, describe(data));
                if (page.echo) respond(data);
            });
        });
        document.getElementById('connection').textContent = '已连接';
        document.getElementById('connection').className = 'tag green';
    });
})();
