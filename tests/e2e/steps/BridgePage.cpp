#include "e2e/steps/BridgePage.h"

#include "e2e/driver/Driver.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Steps.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

Step BridgePage::handler(const QString &name, void (*act)(Driver &))
{
    return {u"bridge-"_s + name, {step}, Lives::signIn, act};
}

void BridgePage::open(Driver &driver)
{
    driver.page().tap(u"#link-bridge"_s);
    see(driver);
    driver.seeInPage(u"#connection"_s, u"已连接"_s);
}

void BridgePage::see(Driver &driver)
{
    driver.seePage(path, u"header h1"_s);
}

void BridgePage::comeBack(Driver &driver)
{
    driver.page().tap(u"header a"_s);
    SignIn::seePortal(driver);
    open(driver);
}

void BridgePage::press(Driver &driver, const QString &handler)
{
    driver.page().tap(u"#btn-"_s + handler);
}

QString BridgePage::outputOf(const QString &handler)
{
    return u"#out-"_s + handler;
}

QJsonObject BridgePage::answerTo(Driver &driver, const QString &handler, const QString &type)
{
    press(driver, handler);
    driver.seeInPage(outputOf(handler), u"[result: %1]"_s.arg(type));
    const QString shown
        = driver.page().find(outputOf(handler)).value_or(WebContent::Element()).text;
    return QJsonDocument::fromJson(shown.left(shown.lastIndexOf(u" [")).toUtf8()).object();
}
