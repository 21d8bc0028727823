#include "web/STHomeViewController.h"

#include "model/DeviceIdentifier.h"
#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/MainQueue.h"
#include "platform/NetworkReachabilityManager.h"
#include "platform/NotificationCenter.h"
#include "platform/UrlOpener.h"
#include "platform/WXApi.h"
#include "session/SsoCookies.h"
#include "ui/HexColor.h"
#include "ui/Shell.h"
#include "upload/SlicingUpload.h"
#include "web/AppInfo.h"
#include "web/BridgeHandlers.h"
#include "web/BridgeResult.h"
#include "web/CookieHeader.h"
#include "web/EngineNavigation.h"
#include "web/NavigationPolicy.h"
#include "web/PageServices.h"
#include "web/PageScripts.h"
#include "web/STHomeViewControllerDelegate.h"
#include "web/WebCookieStore.h"
#include "web/WebPageProfile.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto pushRetryInterval = 60s;
constexpr int video = 1; // of the choices to upload
const QString pageAuthorisationState = QStringLiteral("8888");
const QString defaultStatusColor = QStringLiteral("#3dd187");

}

STHomeViewController::STHomeViewController(const HomeEnvironment &environment)
    : statusColor(defaultStatusColor)
    , m_environment(environment)
    , m_trust(environment.configuration.trustedOrigins)
    , m_bridge(
          [this](const QString &origin) { return m_trust.serves(origin, m_webView.documentUrl()); })
    , m_webView(environment.profile->engineProfile(), &m_bridge, environment.pageHost)
    , m_pushPages(&m_webView, environment.shell->alertView(), environment.loginModel)
    , m_imageSaver(environment.network, environment.photoLibrary, environment.shell->toast())
{
    m_webView.setPolicy([this](const QUrl &url, bool isMainFrame, bool isNewWindow) {
        return decidePolicy(url, isMainFrame, isNewWindow);
    });
    WebCookieStore *cookies = environment.profile->cookies();
    connect(&m_webView, &WebView::loadEnded, cookies, &WebCookieStore::endLoad);
    connect(&m_webView, &WebView::documentGone, &m_bridge, &WebViewJavascriptBridge::documentGone);
    connect(&m_webView, &WebView::didFinishNavigation, this,
        &STHomeViewController::didFinishNavigation);
    connect(environment.slicingUpload, &SlicingUpload::onSlicingUpload, this,
        [this](const QString &result, const QString &document) {
            m_bridge.callHandler(document, u"onSlicingUpload"_s, bridgeResult(result));
        });
    connect(&m_webView, &WebView::didFailNavigation, this, [this] { setErrorViewVisible(true); });
}

STHomeViewController::~STHomeViewController() = default;

void STHomeViewController::viewDidLoad()
{
    observeNotifications();
    m_environment.ssoCookies->configCookies();
    BridgeHandlers::registerAll(&m_bridge, this);
    configWebView();
    configNSTimer();
    // Every login loads the portal again, with fresh cookies; the present one does so too.
    m_environment.loginModel->observeIsLogin(this, [this](bool isLogin) {
        if (isLogin)
            configWebView();
    });
    // After the portal was asked for, whose place the notification's page takes.
    if (const auto launchPush = m_environment.delegate->takePushDictionary())
        m_pushPages.backloadNewWeb(*launchPush);
}

void STHomeViewController::observeNotifications()
{
    NotificationCenter *center = m_environment.notifications;
    center->addObserver(u"STOPNSTimer"_s, this, [this](const QVariant &) { stopNSTimer(); });
    center->addObserver(u"GeTuiPushLoadNewWeb"_s, this,
        [this](const QVariant &userInfo) { m_pushPages.loadNewWeb(userInfo); });
    center->addObserver(u"WechatAuthCode"_s, this,
        [this](const QVariant &answer) { wechatAuthCodeCallback(answer); });
    center->addObserver(u"backGeTuiPushLoadNewWeb"_s, this,
        [this](const QVariant &userInfo) { m_pushPages.backloadNewWeb(userInfo); });
}

void STHomeViewController::viewDidAppear()
{
    const QString urlStr = m_environment.delegate->takeUrlStr();
    if (!urlStr.isNull())
        m_webView.load(QUrl(urlStr));
}

SafeArea *STHomeViewController::safeArea() const
{
    return m_environment.shell->safeArea();
}

QColor STHomeViewController::statusBarColor() const
{
    return colorWithHexString(statusColor);
}

void STHomeViewController::configWebView()
{
    m_webView.evaluateJavaScript(PageScripts::setJumpUrl());
    loadPortal();
}

void STHomeViewController::loadPortal()
{
    const auto &site = m_environment.loginModel->siteInfo;
    const QUrl url(site ? site->redirect_url : QString());
    if (!EngineNavigation::isLoadable(url)) {
        setErrorViewVisible(true);
        return;
    }
    setErrorViewVisible(false);
    m_webView.load(url);
    // After the end of the load whose place this one takes, and before its own beginning.
    m_environment.profile->cookies()->sendWithNextLoad(
        CookieHeader::value(m_environment.cookieStorage->cookiesForUrl(url)), url);
}

void STHomeViewController::configNSTimer()
{
    if (m_environment.defaults->stringForKey(u"GTPushCid"_s) != u"getCidFailed")
        return;
    m_pushTimer = m_environment.mainQueue->every(
        pushRetryInterval, [this] { m_environment.delegate->bindGeTuiAgain(); });
    m_environment.delegate->bindGeTuiAgain();
}

void STHomeViewController::stopNSTimer()
{
    m_pushTimer.reset();
}

void STHomeViewController::logout()
{
    // What comes of them must not reach the page of whoever signs in next.
    m_environment.slicingUpload->cancel();
    m_environment.ssoCookies->removeSaved();
    m_webView.loadHtml(u""_s);
    m_environment.ssoCookies->clearStorage();
    m_environment.delegate->takeUrlStr();
    m_environment.loginModel->logout();
}

void STHomeViewController::jump2LoginPage()
{
    logout();
    m_environment.loginModel->setIsLoginOut(true);
}

void STHomeViewController::quickLogin(const QString &href)
{
    m_environment.delegate->backGroundloginInWithRefresh(true, [self = QPointer(this), href] {
        if (self && EngineNavigation::isLoadable(QUrl(href)))
            self->m_webView.load(QUrl(href));
    });
}

void STHomeViewController::changeStatusColor(const QString &color)
{
    statusColor = color;
    Q_EMIT statusBarColorChanged();
}

void STHomeViewController::wechatLogin()
{
    m_wechatAsker = m_bridge.document();
    if (!m_environment.wxApi->sendAuthReq(u"snsapi_userinfo"_s, pageAuthorisationState))
        m_environment.shell->toast()->showError(u"微信授权功能暂不可用"_s);
}

void STHomeViewController::wechatAuthCodeCallback(const QVariant &answer)
{
    const QVariantMap response = answer.toMap();
    const QString code = response.value(u"code"_s).toString();
    if (response.value(u"state"_s).toString() == pageAuthorisationState && !code.isEmpty())
        m_bridge.callHandler(m_wechatAsker, u"onWechatResult2H5"_s, bridgeResult(code));
}

void STHomeViewController::slicingUpload(const QJsonObject &config)
{
    m_environment.shell->actionSheet()->show(u""_s, u"请选择上传方式"_s,
        {u"拍照/相册"_s, u"录像/视频"_s}, u"取消"_s,
        [self = QPointer(this), config, document = m_bridge.document()](int choice) {
            if (self && choice != ActionSheet::cancelled)
                self->m_environment.slicingUpload->pushImagePickerControllerWithConfig(
                    DictionaryMapper::model<SlicingUploadConfig>(config), choice == video,
                    document);
        });
}

PageServices::Answer STHomeViewController::toPage(const QString &function)
{
    return [self = QPointer(this), function, document = m_bridge.document()](const QString &text) {
        if (self)
            self->m_bridge.callHandler(document, function, bridgeResult(text));
    };
}

void STHomeViewController::scanQrCode()
{
    services()->scanQrCode(toPage(u"onQrResult2H5"_s));
}

void STHomeViewController::getLocation()
{
    services()->getLocation(toPage(u"onGetBDLocation"_s));
}

bool STHomeViewController::isOnline() const
{
    return m_environment.reachability->isReachable();
}

void STHomeViewController::getRequestUrl(const WebViewJavascriptBridge::Respond &respond) const
{
    const QString url
        = AppInfo::requestUrl(*m_environment.loginModel, m_environment.configuration.hosts.portal);
    if (!url.isNull())
        respond(bridgeResult(url));
}

void STHomeViewController::getAppInfo(const WebViewJavascriptBridge::Respond &respond) const
{
    m_environment.deviceIdentifier->whenReady([this, respond](const QString &uuid) {
        respond(bridgeResult(AppInfo::text(*m_environment.loginModel, uuid)));
    });
}

bool STHomeViewController::decidePolicy(const QUrl &url, bool isMainFrame, bool isNewWindow)
{
    const auto policy = NavigationPolicy::decide(url,
        isNewWindow ? NavigationPolicy::TargetFrame::None : NavigationPolicy::TargetFrame::Some,
        m_environment.configuration.customerServiceAccount);
    for (const QUrl &link : policy.openInSystem) {
        if (m_environment.urlOpener->canOpenURL(link)) {
            m_environment.urlOpener->openURL(link);
            break;
        }
    }
    if (policy.loadInThisView && EngineNavigation::isLoadable(url))
        m_webView.load(url);
    Q_UNUSED(isMainFrame)
    return EngineNavigation::mayFollow(url);
}

void STHomeViewController::didFinishNavigation()
{
    setErrorViewVisible(false);
    m_webView.evaluateJavaScript(PageScripts::disableUserSelect());
    m_webView.evaluateJavaScript(PageScripts::disableTouchCallout());
}

void STHomeViewController::setErrorViewVisible(bool visible)
{
    if (std::exchange(m_errorViewVisible, visible) != visible)
        Q_EMIT errorViewVisibleChanged();
}

void STHomeViewController::errorViewButtonDidPress()
{
    setErrorViewVisible(false);
    if (m_webView.hasPage())
        m_webView.reload();
    else
        configWebView();
}

void STHomeViewController::longPressed(QPointF point)
{
    if (!longClickSaveImgAble)
        return;
    m_webView.evaluateJavaScript(
        PageScripts::imageSourceAt(point), [self = QPointer(this)](const QVariant &result) {
            const QString source = result.toString();
            if (!self || source.isEmpty())
                return;
            self->m_environment.shell->actionSheet()->show(
                u""_s, u""_s, {u"保存图片"_s}, u"取消"_s, [self, source](int choice) {
                    if (self && choice != ActionSheet::cancelled)
                        self->m_imageSaver.saveImageToDiskWithUrl(source);
                });
        });
}
