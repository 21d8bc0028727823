#include "web/HomeHarness.h"

#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/home/BridgeHandlers.h"

#include <QQmlEngine>
#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace {

DeploymentConfiguration trusting(const QStringList &origins, const QString &foreignPages)
{
    DeploymentConfiguration configuration;
    configuration.foreignPages = foreignPages;
    configuration.trustedOrigins = origins;
    return configuration;
}

}

HomeHarness::HomeHarness(const QStringList &trustedOrigins, const QString &foreignPages)
    : stage(trusting(trustedOrigins, foreignPages))
    , controller(stage.environment(&delegate))
{
    QObject::connect(&stage.portal.slicingUpload, &SlicingUpload::loginNeeded, &controller,
        [this](const SlicingUpload::LoggedIn &success) {
            delegate.backGroundloginInWithRefresh(false, success);
        });
    BridgeHandlers::registerAll(controller.bridge(), &controller);
    stage.loginModel.setIsLogin(true);
    stage.session.account.session.resume();
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
    stage.session.cookieStorage->setCookie(cookie);
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
    stage.session.cookieStorage->removeReceivedBefore(stage.session.cookieStorage->mark());
    Q_EMIT stage.session.account.session.userChanging();
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
