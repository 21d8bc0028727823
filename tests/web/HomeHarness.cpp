#include "web/HomeHarness.h"

#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/home/BridgeHandlers.h"

#include <QQmlEngine>
#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace {

HomeEnvironment environment(HomeStage &stage, const QStringList &trustedOrigins)
{
    HomeEnvironment environment = stage.environment();
    environment.configuration.trustedOrigins = trustedOrigins;
    return environment;
}

}

HomeHarness::HomeHarness(const QStringList &trustedOrigins)
    : controller(environment(stage, trustedOrigins))
{
    BridgeHandlers::registerAll(controller.bridge(), &controller);
    stage.loginModel.setIsLogin(true);
    stage.session.session.resume();
    window.engine()->addImportPath(u"qrc:/qt/qml"_s);
    window.setInitialProperties({{u"controller"_s, QVariant::fromValue(&controller)}});
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.resize(390, 844);
}

void HomeHarness::setPortal(const QString &redirectUrl)
{
    stage.loginModel.siteInfo = SiteModel();
    stage.loginModel.siteInfo->redirect_url = redirectUrl;
}

void HomeHarness::addCookie(const char *name, const char *value, const QString &domain)
{
    QNetworkCookie cookie(name, value);
    cookie.setDomain(domain);
    cookie.setPath(u"/"_s);
    stage.session.net.cookies->setCookie(cookie);
}

void HomeHarness::show()
{
    window.setSource(QUrl(u"qrc:/qt/qml/Vant/Web/HomeScreen.qml"_s));
    window.show();
    controller.viewDidLoad();
    controller.viewDidAppear();
}

void HomeHarness::changeUser()
{
    stage.profiles.renew();
    stage.session.net.cookies->removeReceivedBefore(stage.session.net.cookies->mark());
    Q_EMIT stage.session.session.userChanging();
}

bool HomeHarness::waitForPage(const QString &title)
{
    return waitForTitle(*controller.webView(), title);
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
