#include "web/questions/PageDialogs.h"

#include "platform/time/MainQueue.h"
#include "platform/transport/ServerAddress.h"
#include "ui/feedback/AlertView.h"
#include "web/host/PageOrigin.h"

#include <QColor>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

const QString refuseAll = QStringLiteral("不再显示");

// As many as fit without scrolling on the narrowest phone: greys, then light to dark.
const QStringList colours {u"#ffffff"_s, u"#c8ccd2"_s, u"#8a9099"_s, u"#4a4f57"_s, u"#000000"_s,
    u"#ffc9c9"_s, u"#ffdfb8"_s, u"#fff3b0"_s, u"#c9f2d6"_s, u"#c6e2ff"_s, u"#ff6b6b"_s,
    u"#ff9f43"_s, u"#ffd43b"_s, u"#3dd187"_s, u"#4dabf7"_s, u"#e5484d"_s, u"#e8710a"_s,
    u"#c79a00"_s, u"#12915c"_s, u"#1668dc"_s, u"#8f1d21"_s, u"#7048e8"_s, u"#c2255c"_s,
    u"#0b6b43"_s, u"#0b3d91"_s};

constexpr int mayBeRefusedFrom = 3;
// A dialog that comes sooner after another is in a row with it.
constexpr auto rowEnds = 3s;

}

PageDialogs::PageDialogs(AlertView *alertView, MainQueue *mainQueue, PagePermissions *permissions)
    : m_alertView(alertView)
    , m_mainQueue(mainQueue)
    , m_permissions(alertView, permissions)
{
}

PageDialogs::~PageDialogs()
{
    // Nobody is left to hear the answers.
    for (const int number : std::exchange(m_shown, {}))
        m_alertView->withdraw(number);
}

int PageDialogs::showAlert(const QUrl &origin, const QString &message)
{
    return show(PageOrigin::name(origin),
        {.message = message, .buttons = {Alert::confirm}, .backButton = 0});
}

int PageDialogs::showConfirm(const QUrl &origin, const QString &message)
{
    return show(PageOrigin::name(origin),
        {.message = message, .buttons = Alert::cancelOrConfirm(), .backButton = 0});
}

int PageDialogs::showPrompt(const QUrl &origin, const QString &message, const QString &defaultText)
{
    return show(PageOrigin::name(origin),
        {.message = message,
            .buttons = Alert::cancelOrConfirm(),
            .input = defaultText,
            .backButton = 0});
}

int PageDialogs::showColour(const QUrl &origin, const QString &colour)
{
    return show(PageOrigin::name(origin),
        {.message = u"选择颜色"_s,
            .buttons = Alert::cancelOrConfirm(),
            .input = colour,
            .inputName = u"颜色值"_s,
            .colours = colours,
            .backButton = 0});
}

int PageDialogs::showLogin(const QUrl &address, const QString &realm, const QString &proxy)
{
    QString message = proxy.isEmpty() ? u"此网站需要登录"_s : u"代理服务器需要登录"_s;
    if (!realm.isEmpty())
        message += u"：“%1”"_s.arg(realm);
    if (proxy.isEmpty() && address.scheme() == u"http" && !ServerAddress::isLoopback(address))
        message += u"\n连接未加密，密码可能被他人看到。"_s;
    return show(proxy.isEmpty() ? PageOrigin::name(address) : proxy,
        {.message = message,
            .buttons = {Alert::cancel, u"登录"_s},
            .input = QString(),
            .inputName = u"用户名"_s,
            .password = QString(),
            .backButton = 0});
}

int PageDialogs::show(const QString &origin, Alert alert)
{
    if (m_refused)
        return 0;
    alert.title = origin;
    const bool mayBeRefused = ++m_inARow >= mayBeRefusedFrom;
    if (mayBeRefused) {
        alert.buttons.prepend(refuseAll);
        alert.backButton = *alert.backButton + 1;
    }
    const int id = ++m_lastDialog;
    const int accepting = int(alert.buttons.size()) - 1;
    const int number = m_alertView->ask(
        alert, [this, id, accepting, mayBeRefused](int button, const Alert &filled) {
            if (!m_shown.contains(id))
                return;
            m_refused = mayBeRefused && button == 0;
            finish(id, button == accepting, filled);
        });
    m_shown.insert(id, number);
    return id;
}

void PageDialogs::finish(int id, bool accepted, const Alert &filled)
{
    m_shown.remove(id);
    m_mainQueue->after(rowEnds, this, [this, last = m_lastDialog] {
        if (last == m_lastDialog)
            m_inARow = 0;
    });
    const QString input = filled.input.value_or(QString());
    const bool isUsable = filled.colours.isEmpty() || QColor::isValidColor(input);
    Q_EMIT answered(id, accepted && isUsable, input, filled.password.value_or(QString()));
}

void PageDialogs::documentGone()
{
    for (const int number : m_shown.values())
        m_alertView->withdraw(number);
    m_permissions.documentGone();
    m_inARow = 0;
    m_refused = false;
}
