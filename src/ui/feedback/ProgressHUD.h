#pragma once

#include <QObject>
#include <qqmlregistration.h>

//! The progress indicator over everything: while it shows, nothing beneath takes input.
//! One for the process, owned by Shell.
class ProgressHUD : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The indicator is made in C++.")
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    explicit ProgressHUD(QObject *parent = nullptr);

    //! Turns until hide(); the text may be empty.
    void show(const QString &text);
    void hide();

    bool isVisible() const { return m_visible; }
    QString text() const { return m_text; }

Q_SIGNALS:
    void changed();

private:
    bool m_visible = false;
    QString m_text;
};
