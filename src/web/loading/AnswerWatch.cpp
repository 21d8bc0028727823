#include "web/loading/AnswerWatch.h"

#include "platform/time/MainQueue.h"
#include "ui/feedback/AlertView.h"

#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 10s;
constexpr int reload = 1; // of the buttons

}

AnswerWatch::AnswerWatch(AlertView *alertView, MainQueue *mainQueue, Probe probe, Excuse excuse)
    : m_alertView(alertView)
    , m_mainQueue(mainQueue)
    , m_probe(std::move(probe))
    , m_excuse(std::move(excuse))
{
}

AnswerWatch::~AnswerWatch()
{
    documentGone();
}

void AnswerWatch::expectAnswer()
{
    if (m_question)
        return;
    m_question = std::make_unique<QObject>();
    m_probe([this, asked = QPointer(m_question.get())] {
        if (asked)
            documentGone();
    });
    wait();
}

void AnswerWatch::documentGone()
{
    m_question.reset();
    if (const int alert = std::exchange(m_alert, 0))
        m_alertView->withdraw(alert);
}

void AnswerWatch::wait()
{
    // The page may have answered at once.
    if (m_question)
        m_mainQueue->after(patience, m_question.get(), [this] { complain(); });
}

void AnswerWatch::complain()
{
    if (m_excuse())
        return wait();
    const Alert alert {.title = u"页面没有响应"_s,
        .message = u"可以继续等待，或重新加载页面。"_s,
        .buttons = {u"等待"_s, u"重新加载"_s},
        .backButton = 0};
    m_alert = m_alertView->show(alert, [this, asked = QPointer(m_question.get())](int button) {
        if (!asked)
            return;
        m_alert = 0;
        if (button != reload)
            return wait();
        documentGone();
        Q_EMIT givenUp();
    });
}
