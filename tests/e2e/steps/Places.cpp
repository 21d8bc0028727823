#include "e2e/steps/Places.h"

#include <QJsonDocument>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

void SignIn::seeLoginScreen(Driver &driver, const QString &school)
{
    driver.seeAll({school, Texts::accountField, Texts::passwordField, Texts::loginButton});
}

void SignIn::acceptAgreement(Driver &driver)
{
    if (!driver.see(Texts::agreementBox, CheckBox).checked)
        driver.tap(Texts::agreementBox, CheckBox);
    driver.waitFor(u"the agreement's box to be checked"_s, [&] {
        const auto box = driver.screen().find(Texts::agreementBox, CheckBox);
        return box && box->checked;
    });
}

void SignIn::readAgreements(Driver &driver)
{
    for (const QString &title : {u"用户协议"_s, u"隐私政策"_s}) {
        driver.tap(u"《%1》"_s.arg(title), Link);
        driver.see(title, Heading);
        driver.seeInPage(u"h1"_s, title);
        driver.photograph();
        driver.tap(Texts::back, Button);
        driver.seeNothingOf(title, Heading);
        driver.waitFor(u"the page to be gone"_s, [&] { return !driver.screen().webView(); });
    }
}

void SignIn::tryWith(Driver &driver, const QString &password)
{
    driver.enter(Texts::accountField, Pupil::userCode);
    driver.enter(Texts::passwordField, password);
    acceptAgreement(driver);
    driver.tap(Texts::loginButton, Button);
}

void SignIn::seePortal(Driver &driver, const QString &userName)
{
    driver.seePage(u"/portal/index.html"_s, u"#greeting"_s);
    driver.seeInPage(u"#greeting"_s, userName);
    driver.seeNothingOf(Texts::loginButton, Button);
}

QUrl WeChatPage::ask(Driver &driver)
{
    SignIn::acceptAgreement(driver);
    return driver.seeOpened([&] { driver.tap(u"微信登录"_s, Button); });
}

void WeChatPage::press(Driver &driver, const QUrl &page, const QString &button)
{
    const QString content = QString::fromUtf8(driver.wire().get(page.toString(QUrl::FullyEncoded)));
    const QRegularExpression pattern(u"id=\"%1\" href=\"([^\"]*)\""_s.arg(button));
    QString callback = pattern.match(content).captured(1);
    driver.check(!callback.isEmpty(), u"%1 has the button %2"_s.arg(page.toString(), button));
    driver.desktop().follow(QUrl(callback.replace(u"&amp;"_s, u"&"_s)));
}

void BridgePage::open(Driver &driver)
{
    driver.page().tap(u"#link-bridge"_s);
    see(driver);
    driver.seeInPage(u"#connection"_s, u"已连接"_s);
}

void BridgePage::see(Driver &driver)
{
    driver.seePage(u"/portal/bridge.html"_s, u"header h1"_s);
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

void BridgePage::seeOutput(Driver &driver, const QString &name, const QString &text)
{
    driver.page().bringIntoView(u"#out-"_s + name);
    driver.seeInPage(u"#out-"_s + name, text);
}

QJsonValue BridgePage::answerTo(Driver &driver, const QString &handler, const QString &type)
{
    press(driver, handler);
    const QString selector = u"#out-"_s + handler;
    driver.seeInPage(selector, u"[result: %1]"_s.arg(type));
    const QString shown = driver.page().find(selector).value_or(WebContent::Element()).text;
    const QByteArray answer = shown.left(shown.lastIndexOf(u" [")).toUtf8();
    return QJsonDocument::fromJson(answer).object()[u"result"];
}
