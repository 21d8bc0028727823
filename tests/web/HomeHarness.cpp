#include "web/HomeHarness.h"

#include "support/Patience.h"
#include "web/HomePageProfile.h"
#include "web/PageHarness.h"

#include <QQmlEngine>
#include <QQuickItem>

using namespace Qt::StringLiterals;

HomeHarness::HomeHarness()
    : defaults(folder.filePath(u"settings.ini"_s))
    , cookies(folder.filePath(u"cookies.json"_s))
    , album(folder.filePath(u"album"_s))
    , keychain(folder.path(), folder.filePath(u"keychain.ini"_s))
    , identifier(&keychain, u"cn.vant.test"_s)
    , login(&defaults)
    , ssoCookies(&cookies, &defaults)
    , shell(mainQueue)
    , pageHost(&shell, folder.path())
    , slicingUpload({
          .network = &network,
          .reachability = &reachability,
          .photoLibrary = &album,
          .shell = &shell,
          .backGroundlogin =
              [this](const UploadEnvironment::LoggedIn &success) {
                  delegate.backGroundloginInWithRefresh(false, success);
              },
          .albumFolder = {},
          .libraryPath = folder.path(),
          .exportFolder = folder.filePath(u"exports"_s),
      })
    , profile(makeHomePageProfile(folder.filePath(u"web"_s), &cookies))
    , controller({
          .configuration = {},
          .delegate = &delegate,
          .profile = profile.get(),
          .loginModel = &login,
          .defaults = &defaults,
          .deviceIdentifier = &identifier,
          .cookieStorage = &cookies,
          .ssoCookies = &ssoCookies,
          .notifications = &notifications,
          .mainQueue = &mainQueue,
          .reachability = &reachability,
          .network = &network,
          .urlOpener = &urlOpener,
          .photoLibrary = &album,
          .wxApi = &wxApi,
          .services = &services,
          .pageHost = &pageHost,
          .slicingUpload = &slicingUpload,
          .shell = &shell,
      })
{
    login.setIsLogin(true);
    window.engine()->addImportPath(u"qrc:/qt/qml"_s);
    window.setInitialProperties({{u"controller"_s, QVariant::fromValue(&controller)}});
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.resize(390, 844);
}

void HomeHarness::setPortal(const QString &redirectUrl)
{
    login.siteInfo = SiteModel();
    login.siteInfo->redirect_url = redirectUrl;
}

void HomeHarness::addCookie(const char *name, const char *value, const QString &domain)
{
    QNetworkCookie cookie(name, value);
    cookie.setDomain(domain);
    cookie.setPath(u"/"_s);
    cookies.setCookie(cookie);
}

void HomeHarness::show()
{
    window.setSource(QUrl(u"qrc:/qt/qml/Vant/Web/HomeScreen.qml"_s));
    window.show();
    controller.viewDidLoad();
    controller.viewDidAppear();
}

bool HomeHarness::waitForPage(const QString &title)
{
    return QTest::qWaitFor(
        [this, title] {
            return evaluate(u"document.readyState == 'complete' ? document.title : ''"_s).toString()
                == title;
        },
        patienceMs);
}

QVariant HomeHarness::evaluate(const QString &script)
{
    return evaluateIn(*controller.webView(), script);
}

void HomeHarness::clickText(const QString &text)
{
    for (QQuickItem *item : window.rootObject()->findChildren<QQuickItem *>()) {
        if (!item->isVisible() || item->property("text").toString() != text)
            continue;
        const QPointF centre = item->mapToScene({item->width() / 2, item->height() / 2});
        QTest::mouseClick(&window, Qt::LeftButton, {}, centre.toPoint());
        return;
    }
    QFAIL(qUtf8Printable(u"nothing says "_s + text));
}
