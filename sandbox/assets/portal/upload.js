// Hands photos or a video to the client and shows what it has brought to the school's storage.
(function () {
    var MIB = 1024 * 1024;
    var host = function (number) { return 'http://127.0.0.' + number + ':' + location.port + '/'; };
    var settings = {
        siteURl: host(7), checkFile_server: 'file/check', checkChunk_server: 'file/checkChunk',
        upload_server: 'file/chunkDone', complete_upload_server: 'file/complete',
        isVideoSelect: true, isCameraSelect: true, isFileSelect: false, fileNumLimit: 9,
        upfileType: 'image,video', maxFileSingleSizeLimit: 2048 * MIB, chunkSize: 524288,
        column_key: 'homework', uploadType: '1', themeColor: '#3dd187'
    };
    var kinds = { jpeg: 'img', jpg: 'img', png: 'img', gif: 'img', mp4: 'video' };
    var shown = 0;

    function byId(id) { return document.getElementById(id); }

    function element(tag, properties, children) {
        var made = Object.assign(document.createElement(tag), properties);
        (children || []).forEach(function (child) { made.appendChild(child); });
        return made;
    }

    function tell(text, failed) {
        byId('out-onSlicingUpload').textContent = text;
        byId('out-onSlicingUpload').className = failed ? 'failed' : 'fresh';
    }

    // The picture or clip itself, from the storage; a sign in its place where it cannot be shown.
    function preview(file) {
        var frame = element('div', { className: 'frame' });
        var kind = kinds[String(file.filePath).split('.').pop().toLowerCase()];
        var sign = element('span', { className: 'sign', textContent: '无法预览' });
        if (!kind) {
            frame.appendChild(sign);
            return frame;
        }
        var media = element(kind, { src: host(8) + file.filePath });
        if (kind === 'img') media.alt = file.filePath;
        else Object.assign(media, { controls: true, muted: true, playsInline: true, preload: 'metadata' });
        media.onerror = function () { frame.replaceChild(sign, media); };
        frame.appendChild(media);
        return frame;
    }

    function card(file) {
        var tag = file.isError ? ['tag orange', '出错'] : file.isUploaded ? ['tag green', '秒传'] : ['tag', '新上传'];
        shown += 1;
        return element('figure', { className: 'card file' }, [
            preview(file),
            element('figcaption', {}, [
                element('div', { className: 'row' }, [
                    element('b', { textContent: '第 ' + shown + ' 个' }),
                    element('span', { className: tag[0], textContent: tag[1] })]),
                element('p', { className: 'soft', textContent: file.filePath }),
                element('p', { className: 'soft', textContent: 'isUploaded: ' + file.isUploaded })])]);
    }

    function receive(data) {
        var files;
        try {
            files = typeof data.result === 'string' ? JSON.parse(data.result) : data.result;
            if (!Array.isArray(files)) throw new Error('不是列表');
        } catch (error) {
            return tell('结果无法读取：' + error.message, true);
        }
        tell('本次收到 ' + files.length + ' 个文件');
        byId('count').textContent = '共 ' + (shown + files.length) + ' 个文件';
        byId('empty').hidden = true;
        files.forEach(function (file) { byId('files').appendChild(card(file)); });
    }

    byId('btn-slicingUpload').onclick = function () {
        tell('请在客户端中选择…');
        setupWebViewJavascriptBridge(function (bridge) { bridge.callHandler('slicingUpload', settings); });
    };
    setupWebViewJavascriptBridge(function (bridge) {
        bridge.registerHandler('onSlicingUpload', receive);
        byId('connection').textContent = '已连接';
        byId('connection').className = 'tag green';
    });
})();
