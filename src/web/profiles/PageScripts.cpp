#include "web/profiles/PageScripts.h"

#include "model/StringFormat.h"
#include "web/bridge/WebViewJavascriptBridge.h"

#include <QFile>
#include <QMetaObject>

using namespace Qt::StringLiterals;

namespace {

QString script(const QString &name)
{
    QFile file(u":/qt/qml/Vant/Web/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("a script is not part of this program");
    return QString::fromUtf8(file.readAll());
}

}

QString PageScripts::bridge()
{
    return script(u"bridge.js"_s);
}

QString PageScripts::transport()
{
    const QMetaObject &shell = WebViewJavascriptBridge::staticMetaObject;
    const auto index
        = [&shell](const char *method) { return QString::number(shell.indexOfMethod(method)); };
    return script(u"transport.js"_s)
        .replace(u"%BEGIN_METHOD%"_s, index("begin(QString,QString)"))
        .replace(u"%RECEIVE_METHOD%"_s, index("receive(QString,QJsonArray)"))
        .replace(u"%TO_PAGE_SIGNAL%"_s, index("toPage(QString,QVariantList)"));
}

QString PageScripts::postCurrentCookies()
{
    return u"window.webkit.messageHandlers.currentCookies.postMessage(document.cookie);"_s;
}

QString PageScripts::fixDocument()
{
    return u"document.documentElement.style.overflow='hidden'"_s;
}

QString PageScripts::setJumpUrl()
{
    return StringFormat::format(
        u"window.localStorage.setItem(%@,%@)"_s, u"app-jump-url"_s, u"/mine"_s);
}

QString PageScripts::disableUserSelect()
{
    return u"document.documentElement.style.webkitUserSelect='none'"_s;
}

QString PageScripts::disableTouchCallout()
{
    return u"document.documentElement.style.webkitTouchCallout='none'"_s;
}

QString PageScripts::viewport()
{
    return u"document.querySelector('meta[name=viewport i]')?.content"_s;
}

QString PageScripts::imageSourceAt(QPointF point)
{
    return QString::asprintf("document.elementFromPoint(%f, %f).src", point.x(), point.y());
}

QString PageScripts::nothing()
{
    return u"0"_s;
}

QString PageScripts::isEmpty()
{
    return u"!document.body || (!document.body.childElementCount && !document.body.innerText.trim())"_s;
}
