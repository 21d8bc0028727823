#pragma once

#include "ui/feedback/Alert.h"

#include <QObject>
#include <QQueue>
#include <qqmlregistration.h>

#include <functional>

//! The alerts of the process: shown one at a time in the order they were asked for, each answered
//! exactly once. A touch beside an alert answers nothing. Those still waiting when the program ends
//! stay unanswered. One for the process, owned by Shell.
class AlertView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Alerts are asked for in C++.")
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QStringList buttons READ buttons NOTIFY changed)
    Q_PROPERTY(bool hasInput READ hasInput NOTIFY changed)
    Q_PROPERTY(QString input READ input WRITE setInput NOTIFY inputChanged)
    Q_PROPERTY(QString inputName READ inputName NOTIFY changed)
    Q_PROPERTY(bool hasPassword READ hasPassword NOTIFY changed)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY inputChanged)
    Q_PROPERTY(QStringList colours READ colours NOTIFY changed)
    Q_PROPERTY(int tag READ tag NOTIFY changed)
    Q_PROPERTY(bool fullScreen READ isFullScreen NOTIFY changed)

public:
    //! The button's index from 0, or cancelled.
    using Answer = std::function<void(int buttonIndex)>;
    //! \a filled: the alert with what the user has put into its lines.
    using InputAnswer = std::function<void(int buttonIndex, const Alert &filled)>;
    static constexpr int cancelled = -1;

    explicit AlertView(QObject *parent = nullptr);

    //! The number by which the alert can be withdrawn.
    int show(const Alert &alert, Answer answer = {});
    //! The same for an alert with an input.
    int ask(const Alert &alert, InputAnswer answer);
    //! Answers an alert with cancelled, be it shown or still waiting. Nothing when it has been
    //! answered.
    void withdraw(int number);

    //! For the view: answers the alert that is shown, hides it, shows the next one. An index that
    //! is no button's is refused.
    Q_INVOKABLE void press(int buttonIndex);
    //! The back key, and the button that closes a FullScreen alert. False when the alert leaves
    //! them no answer, or none is shown.
    Q_INVOKABLE bool cancel();

    bool isVisible() const { return !m_queue.isEmpty(); }
    QString title() const { return current().title; }
    QString message() const { return current().message; }
    QStringList buttons() const { return current().buttons; }
    bool hasInput() const { return current().input.has_value(); }
    QString input() const { return current().input.value_or(QString()); }
    //! For the view: what the user has typed so far.
    void setInput(const QString &input);
    QString inputName() const;
    bool hasPassword() const { return current().password.has_value(); }
    QString password() const { return current().password.value_or(QString()); }
    void setPassword(const QString &password);
    QStringList colours() const { return current().colours; }
    int tag() const { return current().tag; }
    bool isFullScreen() const { return current().style == Alert::Style::FullScreen; }

Q_SIGNALS:
    //! Another alert is shown, or none.
    void changed();
    void inputChanged();

private:
    struct Pending
    {
        int number;
        Alert alert;
        InputAnswer answer;
    };

    const Alert &current() const;
    void announce();
    void finish(int buttonIndex);

    QQueue<Pending> m_queue;
    int m_lastNumber = 0;
};
