// The bridge between a portal page and the student client: see bridge.md.
//
// Global declarations; reference this file or add it to "files" of tsconfig.json. Outside the client, in frames and in
// secondary windows there is no bridge, so every use of window.WebViewJavascriptBridge has to be checked.

/** What every answer and every call of the shell carries. */
interface VantResult<T> {
    result: T;
}

/** Nothing to say: leave the payload out, or give null or {}. */
type VantNoPayload = null | undefined | Record<string, never>;

type VantRespond<T> = (answer: VantResult<T>) => void;

interface VantOutLink {
    title?: string;
    url: string;
    /** Hexadecimal colour of the navigation bar, "#rrggbb". */
    color?: string;
}

interface VantSharedLink {
    url: string;
    title: string;
    content?: string;
    imageUrl?: string;
}

/** Where and what to upload. Service addresses are siteURl directly followed by one of the paths. */
interface VantSlicingUploadConfig {
    /** Base address of the file service; spelt so. */
    siteURl: string;
    /** Path of the call that reports a stored part. */
    upload_server: string;
    checkFile_server: string;
    checkChunk_server: string;
    /** Path of the call that joins the parts. */
    complete_upload_server: string;
    /** A clip may be taken with the camera. */
    isVideoSelect?: boolean;
    /** A picture may be taken with the camera. */
    isCameraSelect?: boolean;
    /** Read and disregarded. */
    isFileSelect?: boolean;
    /** Most photos to pick; less than 1 counts as 1. Of videos always one. */
    fileNumLimit?: number;
    /** Read and disregarded. */
    upfileType?: string;
    /** Bytes, of a video before it is made smaller; absent: 0, and no video passes. */
    maxFileSingleSizeLimit?: number;
    /** Read and disregarded: parts are always 524288 bytes. */
    chunkSize?: number;
    /** Passed through to the check of the file, as is the next. */
    column_key?: string;
    uploadType?: string;
    /** Of the picker, "#rrggbb". */
    themeColor?: string;
}

/** What the text of "getAppInfo" holds once it is parsed. A value that is missing reads "(null)". */
interface VantAppInfo {
    im_type: 1;
    app_type: 1;
    dev_type: 1;
    /** Push client id. */
    regId: string;
    site_id: string;
    /** Identifier of this installation. */
    client_code: string;
    terminal_cdn: string;
    rb_cdn: string;
    base_cdn: string;
    register_cdn: string;
    zzrb_cdn: string;
    qe_cdn: string;
}

/** What the text given to "onGetBDLocation" holds once it is parsed. */
interface VantLocation {
    /** "-1": no position. */
    code: "200" | "-1";
    msg: string;
    /** Empty with code "-1". Degrees with six decimals; the longitude's name is spelt so. */
    data: { latitude: string; lontitude: string; addr: string } | Record<string, never>;
}

/** An element of the list that the text given to "onSlicingUpload" holds once it is parsed. */
interface VantUploadedFile {
    filePath: string;
    host: string;
    isError: boolean;
    /** The service had the file already. */
    isUploaded: boolean;
    uploadId: string;
}

/** The functions of a page that the shell may call, with what each is given. */
interface VantPageFunctions {
    /** The scanned text. */
    onQrResult2H5: VantResult<string>;
    /** The authorisation code. */
    onWechatResult2H5: VantResult<string>;
    /** JSON text of a VantLocation. */
    onGetBDLocation: VantResult<string>;
    /** JSON text of a VantUploadedFile[]. */
    onSlicingUpload: VantResult<string>;
}

interface WebViewJavascriptBridge {
    /** Base address of the site's pages. No answer when the school's own address is malformed. */
    callHandler(name: "getRequestUrl", respond: VantRespond<string>): void;
    callHandler(name: "getRequestUrl", data: VantNoPayload, respond: VantRespond<string>): void;
    /** 0: the device has no network; 1: it has, or nobody knows. */
    callHandler(name: "detectOnline", respond: VantRespond<0 | 1>): void;
    callHandler(name: "detectOnline", data: VantNoPayload, respond: VantRespond<0 | 1>): void;
    /** JSON text of a VantAppInfo; its values are not escaped. */
    callHandler(name: "getAppInfo", respond: VantRespond<string>): void;
    callHandler(name: "getAppInfo", data: VantNoPayload, respond: VantRespond<string>): void;

    // These answer nothing: a callback would never be called.
    callHandler(name: "jump2LoginPage", data?: VantNoPayload): void;
    callHandler(name: "logout", data?: VantNoPayload): void;
    callHandler(name: "scanQrCode", data?: VantNoPayload): void;
    callHandler(name: "getBDLocation", data?: VantNoPayload): void;
    callHandler(name: "getWechatAuthCode", data?: VantNoPayload): void;
    /** Renews the login, then opens the address (http or https). */
    callHandler(name: "quickLoginApp", data: { href: string }): void;
    callHandler(name: "jump2OutlinkPage", data: { obj: VantOutLink }): void;
    callHandler(name: "jump2OutlinkLandscapePage", data: { url: string }): void;
    callHandler(name: "share", data: { imgUrl: string }): void;
    callHandler(name: "linkShare", data: { obj: VantSharedLink }): void;
    /** "#rgb", "#rrggbb" or "#aarrggbb", the "#" optional; anything else leaves the strip without a colour. */
    callHandler(name: "changeStatusColor", data: { color: string }): void;
    /** 1, "1" or true: a long press offers to save an image. 0, "0", false, or none of these: it does not. */
    callHandler(name: "setLongClickSaveImg", data: { able: number | string | boolean }): void;
    callHandler(name: "slicingUpload", data: VantSlicingUploadConfig): void;

    /** A later function of the same name replaces the earlier one. The shell takes no answer of these four. */
    registerHandler<Name extends keyof VantPageFunctions>(
        name: Name,
        handler: (data: VantPageFunctions[Name], respond: (responseData?: unknown) => void) => void,
    ): void;

    /** Does nothing; for pages of the older contract. */
    init(handler?: unknown): void;
    /** Does nothing; for pages of the older contract. */
    disableJavscriptAlertBoxSafetyTimeout(): void;
}

interface WebViewJavascriptBridgeReadyEvent extends Event {
    readonly bridge: WebViewJavascriptBridge;
}

interface DocumentEventMap {
    WebViewJavascriptBridgeReady: WebViewJavascriptBridgeReadyEvent;
}

/** The same as the window's, for pages that use the bare name. */
declare var WebViewJavascriptBridge: WebViewJavascriptBridge | undefined;

interface Window {
    /** There once the document has been parsed; undefined before, outside the client and in frames. */
    WebViewJavascriptBridge?: WebViewJavascriptBridge;
    /** Functions left here are called with the bridge, once, as soon as it is there. */
    WVJBCallbacks?: Array<(bridge: WebViewJavascriptBridge) => void>;
}
