#pragma once

#include <QObject>
#include <QStringList>
#include <qqmlregistration.h>

#include <functional>

//! A choice of actions from the lower edge. One at a time: a newer one cancels the older. Each is
//! answered exactly once. One for the process, owned by Shell.
class ActionSheet : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Sheets are asked for in C++.")
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QStringList actions READ actions NOTIFY changed)
    Q_PROPERTY(QString cancelTitle READ cancelTitle NOTIFY changed)

public:
    //! The action's index from 0, or cancelled.
    using Answer = std::function<void(int actionIndex)>;
    static constexpr int cancelled = -1;

    explicit ActionSheet(QObject *parent = nullptr);

    //! Title and message may be empty.
    void show(const QString &title, const QString &message, const QStringList &actions,
        const QString &cancelTitle, Answer answer);

    //! For the view. Indexes that are no action's are refused.
    Q_INVOKABLE void choose(int actionIndex);
    //! False when no sheet is shown.
    Q_INVOKABLE bool cancel();

    bool isVisible() const { return m_visible; }
    QString title() const { return m_title; }
    QString message() const { return m_message; }
    QStringList actions() const { return m_actions; }
    QString cancelTitle() const { return m_cancelTitle; }

Q_SIGNALS:
    void changed();

private:
    void finish(int actionIndex);

    bool m_visible = false;
    QString m_title;
    QString m_message;
    QStringList m_actions;
    QString m_cancelTitle;
    Answer m_answer;
};
