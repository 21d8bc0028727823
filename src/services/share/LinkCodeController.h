#pragma once

#include "ui/navigation/ViewController.h"

#include <QUrl>

class Shell;

//! One link as a code to scan. Owned by the navigator once it is presented.
class LinkCodeController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QString hint MEMBER m_hint CONSTANT)
    Q_PROPERTY(QString link MEMBER m_link CONSTANT)
    Q_PROPERTY(QUrl code READ code CONSTANT)

public:
    LinkCodeController(
        Shell *shell, const QString &title, const QString &hint, const QString &link);

    //! The code as a picture, a pixel a module, with its quiet zone; empty when the link is too
    //! long or is none.
    QUrl code() const { return m_code; }
    Q_INVOKABLE void copyLink();
    Q_INVOKABLE void dismiss();

    bool isOverlay() const override { return true; }

private:
    Shell *m_shell;
    QString m_hint;
    QString m_link; //!< as it travels: ASCII, escaped
    QUrl m_code;
};
