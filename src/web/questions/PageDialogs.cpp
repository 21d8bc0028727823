#include "web/questions/PageDialogs.h"

#include "platform/time/MainQueue.h"
#include "ui/feedback/AlertView.h"
#include "web/host/PageOrigin.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

const QString refuseAll = QStringLiteral("不再显示");

constexpr int mayBeRefusedFrom = 3;
// A dialog that comes sooner after another is in a row with it.
constexpr auto rowEnds = 3s;

}

PageDialogs::PageDialogs(AlertView *alertView, MainQueue *mainQueue)
    : m_alertView(alertView)
    , m_mainQueue(mainQueue)
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
    return show(origin, {.message = message, .buttons = {Alert::confirm}, .backButton = 0});
}

int PageDialogs::showConfirm(const QUrl &origin, const QString &message)
{
    return show(origin, {.message = message, .buttons = Alert::cancelOrConfirm(), .backButton = 0});
}

int PageDialogs::showPrompt(const QUrl &origin, const QString &message, const QString &defaultText)
{
    return show(origin,
        {.message = message,
            .buttons = Alert::cancelOrConfirm(),
            .input = defaultText,
            .backButton = 0});
}

int PageDialogs::show(const QUrl &origin, Alert alert)
{
    if (m_refused)
        return 0;
    alert.title = PageOrigin::name(origin);
    const bool mayBeRefused = ++m_inARow >= mayBeRefusedFrom;
    if (mayBeRefused) {
        alert.buttons.prepend(refuseAll);
        alert.backButton = *alert.backButton + 1;
    }
    const int id = ++m_lastDialog;
    const int accepting = int(alert.buttons.size()) - 1;
    const int number = m_alertView->ask(
        alert, [this, id, accepting, mayBeRefused](int button, const QString &input) {
            if (!m_shown.contains(id))
                return;
            m_refused = mayBeRefused && button == 0;
            finish(id, button == accepting, input);
        });
    m_shown.insert(id, number);
    return id;
}

void PageDialogs::finish(int id, bool accepted, const QString &input)
{
    m_shown.remove(id);
    m_mainQueue->after(rowEnds, this, [this, last = m_lastDialog] {
        if (last == m_lastDialog)
            m_inARow = 0;
    });
    Q_EMIT answered(id, accepted, input);
}

void PageDialogs::documentGone()
{
    for (const int number : m_shown.values())
        m_alertView->withdraw(number);
    m_inARow = 0;
    m_refused = false;
}
