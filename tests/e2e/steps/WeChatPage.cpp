#include "e2e/steps/WeChatPage.h"

#include "e2e/driver/Driver.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

void WeChatPage::press(Driver &driver, const QUrl &page, const QString &button)
{
    const QString content = QString::fromUtf8(driver.wire().get(page.toString(QUrl::FullyEncoded)));
    const QRegularExpression pattern(u"id=\"%1\" href=\"([^\"]*)\""_s.arg(button));
    QString callback = pattern.match(content).captured(1);
    driver.check(!callback.isEmpty(), u"%1 has the button %2"_s.arg(page.toString(), button));
    driver.desktop().follow(QUrl(callback.replace(u"&amp;"_s, u"&"_s)));
}
