#pragma once

#include <QObject>

#include <functional>
#include <memory>

class AlertView;
class MainQueue;

//! Whether a page still answers: asked after an input, a load or a call, and never of an idle page.
//! Who gets no answer for too long chooses between waiting and loading the page anew. Owned by
//! WebView.
class AnswerWatch : public QObject
{
    Q_OBJECT

public:
    //! Has the page do a little, and tells when it has.
    using Probe = std::function<void(std::function<void()> answered)>;
    //! Whether the page waits for the user, and may be silent.
    using Excuse = std::function<bool()>;

    AnswerWatch(AlertView *alertView, MainQueue *mainQueue, Probe probe, Excuse excuse);
    ~AnswerWatch() override;

    void expectAnswer();
    //! The page that was asked is gone, and its answer with it.
    void documentGone();

Q_SIGNALS:
    //! The user wants no more of the page that hangs.
    void givenUp();

private:
    void wait();
    void complain();

    AlertView *m_alertView;
    MainQueue *m_mainQueue;
    const Probe m_probe;
    const Excuse m_excuse;
    std::unique_ptr<QObject> m_question; // while the page owes an answer
    int m_alert = 0;
};
