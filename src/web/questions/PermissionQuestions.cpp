#include "web/questions/PermissionQuestions.h"

#include "ui/feedback/AlertView.h"
#include "web/bridge/BridgeTrust.h"
#include "web/host/PageOrigin.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Matter = PagePermissions::Matter;

constexpr int refuseButton = 0;
constexpr int allowButton = 1;

QUrl asEngineNames(const QUrl &origin)
{
    return QUrl(BridgeTrust::originOf(origin) + u'/');
}

QString wish(const QList<Matter> &matters)
{
    switch (matters.first()) {
    case Matter::Camera:
        return matters.size() > 1 ? u"想使用摄像头和麦克风"_s : u"想使用摄像头"_s;
    case Matter::Microphone:
        return u"想使用麦克风"_s;
    case Matter::Position:
        return u"想获取你的位置"_s;
    case Matter::Notifications:
        return u"想向你发送通知"_s;
    }
    Q_UNREACHABLE();
}

}

PermissionQuestions::PermissionQuestions(AlertView *alertView, PagePermissions *permissions)
    : m_alertView(alertView)
    , m_permissions(permissions)
{
    connect(
        permissions, &PagePermissions::takenBack, this, [this](const QUrl &origin, Matter matter) {
            Q_EMIT settled(asEngineNames(origin), int(matter), false);
        });
}

PermissionQuestions::~PermissionQuestions()
{
    // Nobody is left to hear the answers.
    for (const int number : std::exchange(m_shown, {}))
        m_alertView->withdraw(number);
}

void PermissionQuestions::ask(const QUrl &origin, int feature, const QList<int> &matters)
{
    const Asked asked {origin, feature};
    if (m_shown.contains(asked))
        return;
    Matters open;
    bool isRefused
        = matters.isEmpty() || !m_permissions->mayAsk(origin) || m_dismissed.contains(asked);
    for (const int value : matters) {
        const auto answer = m_permissions->answer(origin, Matter(value));
        isRefused |= answer == false;
        if (!answer)
            open << Matter(value);
    }
    if (isRefused || open.isEmpty())
        Q_EMIT answered(origin, feature, !isRefused);
    else
        show(asked, open);
}

void PermissionQuestions::show(const Asked &asked, const Matters &matters)
{
    const Alert question {.title = PageOrigin::name(asked.first),
        .message = wish(matters),
        .buttons = {u"不允许"_s, u"允许"_s},
        .backButton = AlertView::cancelled};
    m_shown.insert(asked, m_alertView->show(question, [this, asked, matters](int button) {
        hear(asked, matters, button);
    }));
}

void PermissionQuestions::hear(const Asked &asked, const Matters &matters, int button)
{
    if (!m_shown.remove(asked))
        return;
    const auto &[origin, feature] = asked;
    if (button == allowButton || button == refuseButton) {
        for (const Matter matter : matters)
            m_permissions->remember(origin, matter, button == allowButton);
    } else {
        m_dismissed << asked;
    }
    Q_EMIT answered(origin, feature, button == allowButton);
}

void PermissionQuestions::pageShown(const QUrl &address)
{
    // What the engine asks for anew each time needs no reminder.
    for (const Matter matter : {Matter::Position, Matter::Notifications}) {
        if (m_permissions->mayAsk(address) && m_permissions->answer(address, matter) == true)
            Q_EMIT settled(asEngineNames(address), int(matter), true);
    }
}

void PermissionQuestions::documentGone()
{
    for (const int number : m_shown.values())
        m_alertView->withdraw(number);
    m_dismissed.clear();
}
