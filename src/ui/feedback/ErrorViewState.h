#pragma once

#include <QObject>
#include <qqmlregistration.h>

//! Whether what a screen shows could not be loaded, and the user's wish to try again: what an
//! ErrorView has behind it. Owned by the screen's controller.
class ErrorViewState : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the controller of a screen.")
    Q_PROPERTY(bool visible READ isVisible NOTIFY visibleChanged)
    Q_PROPERTY(QString reason READ reason NOTIFY reasonChanged)

public:
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);
    //! Why, in one line; may be empty.
    QString reason() const { return m_reason; }
    void setReason(const QString &reason);

Q_SIGNALS:
    void visibleChanged();
    void reasonChanged();
    //! The view's button.
    void retry();

private:
    bool m_visible = false;
    QString m_reason;
};
