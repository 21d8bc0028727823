#include "web/home/STHomeViewController.h"

#include "model/DeviceIdentifier.h"
#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "platform/desktop/NetworkReachabilityManager.h"
#include "platform/services/WXApi.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/time/MainQueue.h"
#include "platform/time/NotificationCenter.h"
#include "session/Account.h"
#include "session/SsoCookies.h"
#include "ui/shell/Shell.h"
#include "ui/theme/HexColor.h"
#include "upload/SlicingUpload.h"
#include "web/bridge/BridgeResult.h"
#include "web/engine/EngineNavigation.h"
#include "web/home/AppInfo.h"
#include "web/portal/Portal.h"
#include "web/home/STHomeViewControllerDelegate.h"
#include "web/profiles/CookieHeader.h"
#include "web/profiles/PageProfiles.h"
#include "web/profiles/PageScripts.h"
#include "web/profiles/WebCookieStore.h"
#include "web/profiles/WebPageProfile.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto pushRetryInterval = 60s;
constexpr int video = 1; // of the choices to upload

}

STHomeViewController::STHomeViewController(const HomeEnvironment &environment)
    : statusColor(shellColor)
    , m_device(environment.device)
    , m_account(environment.account)
    , m_shell(environment.shell)
    , m_portal(environment.portal)
    , m_services(environment.services)
    , m_delegate(environment.delegate)
    , m_portalHost(environment.configuration.hosts.portal)
    , m_profile(environment.portal->pageProfiles.home())
    , m_trust(environment.configuration.trustedOrigins)
    , m_bridge(
          [this](const QString &origin) { return m_trust.serves(origin, m_webView.documentUrl()); })
    , m_webView(m_profile->engineProfile(), &m_bridge, &environment.portal->pageHost)
    , m_errors(&m_webView, &environment.portal->pageHost)
    , m_pushPages(&m_webView, environment.shell->alertView(), &environment.account->loginModel,
          &environment.account->session)
    , m_imageSaver(
          environment.device.network, environment.device.photoLibrary, environment.shell->toast())
{
    connect(&m_webView, &WebView::loadEnded, this, [this] { m_profile->cookies()->endLoad(); });
    connect(&m_webView, &WebView::profileChanged, this, [this] { m_formerProfile.reset(); });
    connect(&m_webView, &WebView::documentGone, &m_bridge, &WebViewJavascriptBridge::documentGone);
    connect(&m_webView, &WebView::didFinishNavigation, this,
        &STHomeViewController::didFinishNavigation);
    connect(&environment.portal->slicingUpload, &SlicingUpload::onSlicingUpload, this,
        [this](const QString &result, const QString &document) {
            m_bridge.callHandler(document, u"onSlicingUpload"_s, bridgeResult(result));
        });
    connect(m_errors.state(), &ErrorViewState::retry, this,
        &STHomeViewController::errorViewButtonDidPress);
    connect(&m_pushPages, &PushPages::unanswered, this,
        [this](const QVariantMap &userInfo) { m_delegate->keepNotification(userInfo); });
    connect(&environment.account->session, &UserSession::ending, this,
        &STHomeViewController::leaveUser);
    connect(&environment.account->session, &UserSession::userChanging, this,
        &STHomeViewController::leaveProfile);
}

STHomeViewController::~STHomeViewController() = default;

void STHomeViewController::viewDidLoad()
{
    observeNotifications();
    m_account->ssoCookies.configCookies();
    configWebView();
    configNSTimer();
    m_services->initLocation();
    // Every login loads the portal again, with fresh cookies; the present one does so too.
    m_account->loginModel.observeIsLogin(this, [this](bool isLogin) {
        if (!isLogin)
            return;
        m_profile->cookies()->comeBack();
        configWebView();
        // Its page takes the place of the portal, which was asked for before.
        if (const auto notification = m_delegate->takePushDictionary())
            m_pushPages.backloadNewWeb(*notification);
    });
}

void STHomeViewController::observeNotifications()
{
    NotificationCenter *center = m_device.notifications;
    center->addObserver(u"STOPNSTimer"_s, this, [this](const QVariant &) { stopNSTimer(); });
    center->addObserver(u"GeTuiPushLoadNewWeb"_s, this,
        [this](const QVariant &userInfo) { m_pushPages.loadNewWeb(userInfo); });
    center->addObserver(u"WechatAuthCode"_s, this,
        [this](const QVariant &answer) { wechatAuthCodeCallback(answer); });
    center->addObserver(u"backGeTuiPushLoadNewWeb"_s, this, [this](const QVariant &userInfo) {
        // Else the delegate keeps it.
        if (m_account->session.isActive())
            m_pushPages.backloadNewWeb(userInfo);
    });
}

void STHomeViewController::viewDidAppear()
{
    const QString urlStr = m_delegate->takeUrlStr();
    if (!urlStr.isNull())
        m_webView.load(QUrl(urlStr));
}

bool STHomeViewController::handleBack()
{
    const auto &site = m_account->loginModel.siteInfo;
    const QUrl portal(site ? site->redirect_url : QString());
    if (!m_webView.back() && m_webView.url() != portal && EngineNavigation::isLoadable(portal))
        m_webView.load(portal);
    return true;
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
    const auto &site = m_account->loginModel.siteInfo;
    const QUrl url(site ? site->redirect_url : QString());
    if (!EngineNavigation::isLoadable(url)) {
        m_errors.showNoAddress();
        return;
    }
    m_errors.hide();
    m_webView.load(url);
    // After the end of the load whose place this one takes, and before its own beginning.
    m_profile->cookies()->sendWithNextLoad(
        CookieHeader::value(m_device.cookieStorage->cookiesForUrl(url)), url);
}

void STHomeViewController::configNSTimer()
{
    if (m_device.defaults->stringForKey(u"GTPushCid"_s) != u"getCidFailed")
        return;
    m_pushTimer
        = m_device.mainQueue->every(pushRetryInterval, [this] { m_delegate->bindGeTuiAgain(); });
    m_delegate->bindGeTuiAgain();
}

void STHomeViewController::stopNSTimer()
{
    m_pushTimer.reset();
}

void STHomeViewController::logout()
{
    m_account->session.logout();
}

// However the session ends: nothing of its pages can be gone back to.
void STHomeViewController::leaveUser()
{
    m_profile->cookies()->leave();
    m_webView.startAfresh();
    m_shell->actionSheet()->cancel();
    m_errors.hide();
    longClickSaveImgAble = false;
    changeStatusColor(shellColor);
}

void STHomeViewController::leaveProfile()
{
    // The portal has seen to it that there is a new one.
    m_formerProfile = std::exchange(m_profile, m_portal->pageProfiles.home());
    m_webView.startAfreshIn(m_profile->engineProfile());
}

void STHomeViewController::jump2LoginPage()
{
    logout();
    m_account->loginModel.setIsLoginOut(true);
}

void STHomeViewController::quickLogin(const QString &href)
{
    const int session = m_account->session.number();
    m_delegate->backGroundloginInWithRefresh(true, [self = QPointer(this), session, href] {
        if (self && session == self->m_account->session.number()
            && EngineNavigation::isLoadable(QUrl(href)))
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
    if (!m_device.wxApi->sendAuthReq(u"snsapi_userinfo"_s, WXAuthState::page))
        m_shell->toast()->showError(u"微信授权功能暂不可用"_s);
}

void STHomeViewController::wechatAuthCodeCallback(const QVariant &answer)
{
    const QVariantMap response = answer.toMap();
    const QString code = response.value(u"code"_s).toString();
    if (response.value(u"state"_s).toString() == WXAuthState::page && !code.isEmpty())
        m_bridge.callHandler(m_wechatAsker, u"onWechatResult2H5"_s, bridgeResult(code));
}

void STHomeViewController::slicingUpload(const QJsonObject &config)
{
    m_shell->actionSheet()->show(u""_s, u"请选择上传方式"_s, {u"拍照/相册"_s, u"录像/视频"_s},
        u"取消"_s, [self = QPointer(this), config, document = m_bridge.document()](int choice) {
            if (self && choice != ActionSheet::cancelled)
                self->m_portal->slicingUpload.pushImagePickerControllerWithConfig(
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
    m_services->scanQrCode(toPage(u"onQrResult2H5"_s));
}

void STHomeViewController::getLocation()
{
    m_services->getLocation(toPage(u"onGetBDLocation"_s));
}

bool STHomeViewController::isOnline() const
{
    return m_device.reachability->isReachable();
}

void STHomeViewController::getRequestUrl(const WebViewJavascriptBridge::Respond &respond) const
{
    const QString url = AppInfo::requestUrl(m_account->loginModel, m_portalHost);
    if (!url.isNull())
        respond(bridgeResult(url));
}

void STHomeViewController::getAppInfo(const WebViewJavascriptBridge::Respond &respond) const
{
    m_account->studentIdentifier.whenReady([this, respond](const QString &uuid) {
        respond(bridgeResult(AppInfo::text(m_account->loginModel, uuid)));
    });
}

void STHomeViewController::didFinishNavigation()
{
    m_webView.evaluateJavaScript(PageScripts::disableUserSelect());
    m_webView.evaluateJavaScript(PageScripts::disableTouchCallout());
}

void STHomeViewController::errorViewButtonDidPress()
{
    m_errors.hide();
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
            self->m_shell->actionSheet()->show(
                u""_s, u""_s, {u"保存图片"_s}, u"取消"_s, [self, source](int choice) {
                    if (self && choice != ActionSheet::cancelled)
                        self->m_imageSaver.saveImageToDiskWithUrl(source);
                });
        });
}
